#include "queries/date_check.h"

#include "queries/starting_queries.h"

namespace qbx {

namespace {

constexpr int kEarliestYear = 1990;

bool IsUsable(const QDate& date) {
  return date.isValid() && date.year() >= kEarliestYear;
}

DateRule DateRuleOf(int query) {
  const StartingQuery* const found = FindStartingQuery(query);
  return found == nullptr ? DateRule::kNone : found->dates;
}

}  // namespace

bool HasDateCheck(int query) {
  return DateRuleOf(query) != DateRule::kNone;
}

bool CheckDates(QueryOptions& options) {
  const auto& [from, to] = options.dteDate;
  if (!IsUsable(from) || !IsUsable(to)) return false;
  options.FromDateText = from.toString(QStringLiteral("yyyy-MM-dd"));
  options.ToDateText = to.toString(QStringLiteral("yyyy-MM-dd"));
  return true;
}

bool CheckQueryDates(int query, QueryOptions& options, const QDate& today) {
  if (DateRuleOf(query) == DateRule::kFilledWhenEmpty) {
    auto& [from, to] = options.dteDate;
    // Text that is no date is refused as in other queries, and stays in its box.
    if (!from.isValid() && !options.dteDateHasText[0]) from = QDate(kEarliestYear, 1, 1);
    if (!to.isValid() && !options.dteDateHasText[1]) to = today;
  }
  return CheckDates(options);
}

}  // namespace qbx
