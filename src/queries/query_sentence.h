// A sentence about what a query selects.

#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include "queries/query_options.h"

namespace qbx {

/// What the starting query selects with the present options, before any filter, or which option is missing. The rows of
/// the queries hold the texts, with words in braces: `{earlier}` and `{later}` for the two dates (which may be given in
/// either order), `{places}` for the places of a ranking, `{makes}` and `{reminder}` for what is chosen.
/// \param query      the query number; for a group or an invalid number the text is empty
/// \param reminders  the entries of the reminder list
[[nodiscard]] QString QuerySelects(int query, const QueryOptions& options, const QStringList& reminders,
                                   bool boatEdition, const QDate& today);

}  // namespace qbx
