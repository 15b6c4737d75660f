// Effects of a filter that its controls do not show.

#pragma once

#include <QString>
#include <QStringList>

#include "campaigns/campaign_record.h"
#include "queries/filters.h"

namespace qbx {

/// The note beside a ticked filter: how a number was read, what an empty value means, or that the filter is not
/// applied. Empty when there is nothing to add.
[[nodiscard]] QString FilterNote(const Filters& filters, FilterIndex filter);

/// The notes of all filters, each after the caption of its filter.
[[nodiscard]] QStringList FilterNotes(const Filters& filters, bool boatEdition);

/// For a stored campaign: a sentence for each ticked filter whose number is read differently since grouped digits count
/// as one number. Saving the campaign writes the numbers without groups, so the sentences then disappear.
[[nodiscard]] QStringList NumbersReadAnew(const CampaignRecord& record, bool boatEdition);

}  // namespace qbx
