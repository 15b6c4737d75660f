// What a filter does that its controls do not show.

#pragma once

#include <QString>
#include <QStringList>

#include "campaigns/campaign_record.h"
#include "queries/filters.h"

namespace qbx {

/// What stands beside a ticked filter: how a number was read, what an empty value means, or that the filter is not
/// applied. Empty when it does what it looks like.
[[nodiscard]] QString FilterNote(const Filters& filters, FilterIndex filter);

/// The notes of all filters, each behind the caption of its filter.
[[nodiscard]] QStringList FilterNotes(const Filters& filters, bool boatEdition);

/// For a stored campaign: the ticked filters whose number reads otherwise since digits in groups are one number, in a
/// sentence each. Saving the campaign writes the numbers without groups, which ends it.
[[nodiscard]] QStringList NumbersReadAnew(const CampaignRecord& record, bool boatEdition);

}  // namespace qbx
