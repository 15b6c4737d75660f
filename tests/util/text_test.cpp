#include "util/text.h"

#include <gtest/gtest.h>

#include <limits>

namespace qbx {
namespace {

TEST(Text, QuotesForSql) {
  EXPECT_EQ(SqlQuoted("O'Brien's"), "'O''Brien''s'");
  EXPECT_EQ(SqlQuoted({}), "''");
  EXPECT_EQ(SqlDoubled("'"), "''");
}

struct NumberCase {
  const char* text;
  double number;
  qint64 integer;
};

TEST(Text, ReadsTheNumberAtTheStart) {
  const NumberCase cases[] = {
      {"", 0, 0},
      {"abc", 0, 0},
      {"25 of them", 25, 25},
      {"  -3.75x", -3.75, -4},
      {"+7", 7, 7},
      {".5", 0.5, 0},
      {"2.5", 2.5, 2},
      {"3.5", 3.5, 4},
      {"12.", 12, 12},
      {"-", 0, 0},
      {"-.", 0, 0},
      {"1e3", 1000, 1000},
      {"1e", 1, 1},
      {"1,250", 1, 1},
      {"9007199254740993", 9007199254740992.0, 9007199254740993},
      {"99999999999999999999", 1e20, std::numeric_limits<qint64>::max()},
      {"-99999999999999999999", -1e20, std::numeric_limits<qint64>::min()},
      {"1e999", std::numeric_limits<double>::max(), std::numeric_limits<qint64>::max()},
      {"nan", 0, 0},
      {"inf", 0, 0},
  };
  for (const NumberCase& each : cases) {
    EXPECT_EQ(LeadingNumber(each.text), each.number) << each.text;
    EXPECT_EQ(LeadingInteger(each.text), each.integer) << each.text;
  }
}

TEST(Text, WritesTheShortestPlainNumber) {
  const std::pair<double, const char*> cases[] = {
      {0, "0"},       {-0.0, "0"},      {0.1, "0.1"},         {1250, "1250"},
      {-3.5, "-3.5"}, {1e6, "1000000"}, {0.00001, "0.00001"}, {std::numeric_limits<double>::infinity(), "0"}};
  for (const auto& [number, text] : cases)
    EXPECT_EQ(ShortestNumber(number), text);
}

TEST(Text, TrimsBlanksOnly) {
  EXPECT_EQ(TrimBlanks("  a b\t "), "a b\t");
  EXPECT_EQ(TrimBlanks("   "), QString());
}

TEST(Text, NeverCutsACharacterInHalf) {
  const QString car = "ab\U0001F697";
  EXPECT_EQ(CutText(car, 3), "ab");
  EXPECT_EQ(CutText(car, 4), car);
  EXPECT_EQ(CutText("abc", 0), QString());
}

}  // namespace
}  // namespace qbx
