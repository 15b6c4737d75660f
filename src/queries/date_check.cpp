// The check of the two dates of step 1.

#include "queries/date_check.h"

#include "queries/query_catalogue.h"

namespace qbx {

namespace {

constexpr int kEarliestYear = 1990;

bool IsUsable(const QDate& date) {
  return date.isValid() && date.year() >= kEarliestYear;
}

}  // namespace

bool HasDateCheck(int query) {
  switch (query) {
    case kLapsedCustomers:
    case kRecentCustomers:
    case kTopCustomers:
    case kBottomCustomers:
    case kReminderDate:
      return true;
    default:
      return false;
  }
}

bool CheckDates(QueryOptions& options) {
  const auto& [from, to] = options.dteDate;
  if (!IsUsable(from) || !IsUsable(to)) return false;
  options.FromDateText = from.toString(QStringLiteral("yyyy-MM-dd"));
  options.ToDateText = to.toString(QStringLiteral("yyyy-MM-dd"));
  return true;
}

bool CheckQueryDates(int query, QueryOptions& options, const QDate& today) {
  if (query == kTopCustomers || query == kBottomCustomers) {
    auto& [from, to] = options.dteDate;
    // A text that is no date is refused like anywhere else; the box that holds it keeps it.
    if (!from.isValid() && !options.dteDateHasText[0]) from = QDate(kEarliestYear, 1, 1);
    if (!to.isValid() && !options.dteDateHasText[1]) to = today;
  }
  return CheckDates(options);
}

}  // namespace qbx
