// What a query selects, in a sentence.

#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include "queries/query_options.h"

namespace qbx {

/// What the starting query selects with the options as they stand, before any filter, or what it still needs. The
/// texts stand in the rows of the queries, with words in braces: `{earlier}` and `{later}` are the two dates in their
/// order (they may be given in either), `{places}` the places of a ranking, `{makes}` and `{reminder}` what is chosen.
/// \param query      the query number; a group, or none, selects nothing: an empty text
/// \param reminders  the entries of the reminder list
[[nodiscard]] QString QuerySelects(int query, const QueryOptions& options, const QStringList& reminders,
                                   bool boatEdition, const QDate& today);

}  // namespace qbx
