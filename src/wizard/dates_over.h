// A reminder campaign whose dates have passed.

#pragma once

#include <QDate>
#include <QString>

#include "queries/query_options.h"

namespace qbx {

/// Reminders are about dates to come. A range in the past is valid, but selects customers whose date has passed.
/// \return a sentence for the user when `query` (a number) is the reminder query and both dates are before today,
///         otherwise empty
[[nodiscard]] QString DatesOverText(int query, const QueryOptions& options, const QDate& today);

}  // namespace qbx
