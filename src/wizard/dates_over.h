// A reminder campaign whose dates have passed.

#pragma once

#include <QDate>
#include <QString>

#include "queries/query_options.h"

namespace qbx {

/// Reminders tell of what is to come: a range that has passed selects customers whose date is over, though nothing is wrong with it.
/// \return a sentence for the user when the query (by number) is the reminder query and both dates are before today, otherwise empty
[[nodiscard]] QString DatesOverText(int query, const QueryOptions& options, const QDate& today);

}  // namespace qbx
