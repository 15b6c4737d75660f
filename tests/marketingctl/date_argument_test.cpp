// Relative dates.

#include "marketingctl/date_argument.h"

#include <gtest/gtest.h>

namespace qbx::ctl {

TEST(DateArgument, CountsFromTheDayOfTheCallAndEndsMonthsWithTheirLastDay) {
  const QDate last(2027, 1, 31);  // the next month is shorter
  const std::pair<const char*, QDate> dates[] = {
      {"today", last},
      {"+14d", QDate(2027, 2, 14)},
      {"-2w", QDate(2027, 1, 17)},
      {"+1m", QDate(2027, 2, 28)},
      {"-2Y", QDate(2025, 1, 31)},
      {"today-1m", QDate(2026, 12, 31)},
      {"month-start", QDate(2027, 1, 1)},
      {"month-start+1m", QDate(2027, 2, 1)},
      {"month-start+10d", QDate(2027, 1, 11)},
      {"month-end+1m", QDate(2027, 2, 28)},
      {"month-end+1y", QDate(2028, 1, 31)},
      {"month-end+1d", QDate(2027, 2, 1)},
      {"2028-02-29", QDate(2028, 2, 29)},
  };
  for (const auto& [text, day] : dates)
    EXPECT_EQ(DateArgument("--from", text, last), day) << text;
  // The end of a month is that of the month meant, not as many days as the month of the call has.
  EXPECT_EQ(DateArgument("--to", "month-end+1m", QDate(2027, 2, 28)), QDate(2027, 3, 31));
  for (const char* none : {"", "+", "14d", "+14", "month-end+1m+1d", "2026-02-29", "1989-12-31", "-99999y"})
    EXPECT_ANY_THROW((void)DateArgument("--from", none, last)) << none;
}

}  // namespace qbx::ctl
