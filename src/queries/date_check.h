// Checking the two dates of step 1.

#pragma once

#include <QDate>

#include "queries/query_options.h"

namespace qbx {

/// Whether a query (by number) has a date range that must be valid before it runs.
[[nodiscard]] bool HasDateCheck(int query);

/// Both dates must be valid and later than 1989. They are not compared with each other. On success `FromDateText` and
/// `ToDateText` are set; otherwise they do not change.
[[nodiscard]] bool CheckDates(QueryOptions& options);

/// Checks the dates for a query: `DateRule::kFilledWhenEmpty` first fills empty dates.
[[nodiscard]] bool CheckQueryDates(int query, QueryOptions& options, const QDate& today);

}  // namespace qbx
