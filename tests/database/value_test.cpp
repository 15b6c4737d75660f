// Conversions of one value, comparing text, taking a connection string apart.

#include "database/value.h"

#include <gtest/gtest.h>

#include <limits>

#include "database/connection.h"
#include "database/session.h"
#include "database/text_compare.h"

namespace qbx {
namespace {

struct Conversion {
  Value value;
  bool asBool;
  qint64 asInt;
  double asDouble;
  const char* asText;
};

TEST(ValueTest, ConvertsWithoutFailing) {
  const Conversion cases[] = {
      {Value(), false, 0, 0, ""},
      {Value(true), true, 1, 1, "True"},
      {Value(false), false, 0, 0, "False"},
      {Value(-42), true, -42, -42, "-42"},
      {Value(2.5), true, 2, 2.5, "2.5"},
      {Value(3.5), true, 4, 3.5, "3.5"},
      {Value(0.1 + 0.2), true, 0, 0.30000000000000004, "0.30000000000000004"},
      {Value(1e6), true, 1000000, 1e6, "1000000"},
      {Value(1e19), true, std::numeric_limits<qint64>::max(), 1e19, "10000000000000000000"},
      {Value::Decimal(125000, 4), true, 12, 12.5, "12.5"},
      {Value::Decimal(-5, 2), true, 0, -0.05, "-0.05"},
      {Value::Decimal(1200, 2), true, 12, 12, "12"},
      {Value(QString("12.7 miles")), true, 13, 12.7, "12.7 miles"},
      {Value(QString("  -3")), true, -3, -3, "  -3"},
      {Value(QString("TRUE")), true, 0, 0, "TRUE"},
      {Value(QString("infinity")), false, 0, 0, "infinity"},
      {Value(QDateTime(QDate(2024, 2, 9), QTime(0, 0), Qt::UTC)), true, 0, 0, "09/02/2024"},
      {Value(QDateTime(QDate(2024, 2, 9), QTime(17, 5, 6), Qt::UTC)), true, 0, 0, "09/02/2024 17:05:06"},
  };
  for (const Conversion& test : cases) {
    EXPECT_EQ(test.value.ToBool(), test.asBool) << test.asText;
    EXPECT_EQ(test.value.ToInt(), test.asInt) << test.asText;
    EXPECT_DOUBLE_EQ(test.value.ToDouble(), test.asDouble) << test.asText;
    EXPECT_EQ(test.value.ToText().toStdString(), test.asText);
  }
}

TEST(ValueTest, ReadsDatesFromText) {
  const std::pair<const char*, QDateTime> cases[] = {
      {"2024-02-29", QDateTime(QDate(2024, 2, 29), QTime(0, 0), Qt::UTC)},
      {"29/02/2024", QDateTime(QDate(2024, 2, 29), QTime(0, 0), Qt::UTC)},
      {"2024-02-29 23:59:58", QDateTime(QDate(2024, 2, 29), QTime(23, 59, 58), Qt::UTC)},
      {"2024-02-29 23:59:58.007", QDateTime(QDate(2024, 2, 29), QTime(23, 59, 58, 7), Qt::UTC)},
      {"2026-03-29 02:30:00", QDateTime(QDate(2026, 3, 29), QTime(2, 30), Qt::UTC)},  // left out in much of Europe
      {"2023-02-29", {}},
      {"2024-02-29 25:00:00", {}},
      {"soon", {}},
      {"", {}},
  };
  for (const auto& [text, expected] : cases)
    EXPECT_EQ(Value(QString::fromLatin1(text)).ToDateTime(), expected) << text;
}

TEST(CellTest, GivesDatesOfBothSidesOfTheEpoch) {
  Cell cell;
  cell.type = ValueType::kDateTime;
  cell.integer = -1000;
  EXPECT_EQ(cell.ToValue().ToDateTime(), QDateTime(QDate(1969, 12, 31), QTime(23, 59, 59), Qt::UTC));
  cell.integer = 1709251200000;
  EXPECT_EQ(cell.ToValue().ToText(), "01/03/2024");
}

TEST(CompareNoCaseTest, FoldsAllOfUnicode) {
  const std::pair<const char*, const char*> inOrder[] = {{"", "a"},          {"abc", "ABD"}, {"ABC", "abcd"},
                                                         {"Zebra", "Äpfel"}, {"ä1", "Ä2"},   {"e\xCC\x81", "é"}};
  for (const auto& [low, high] : inOrder) {
    EXPECT_LT(CompareNoCase(low, high), 0) << low;
    EXPECT_GT(CompareNoCase(high, low), 0) << low;
  }
  EXPECT_EQ(CompareNoCase("ÖZTÜRK straße", "öztürk STRAßE"), 0);
  EXPECT_EQ(CompareNoCase("sevenbyÖtes", "sevenbyötes"),
            0);  // the difference lies inside a character, behind a whole word
  EXPECT_GT(CompareNoCase("sevenby\u2161x", "sevenby\u2170x"), 0);
  EXPECT_EQ(CompareNoCase("Ö b  ", "ö B"), 0);  // blanks at the end do not count
  EXPECT_EQ(CompareNoCase("   ", ""), 0);
  EXPECT_EQ(FoldedStart("Ab "), FoldedStart("aB"));
  EXPECT_NE(CompareNoCase("a\xC3", "a"), 0);  // cut in the middle of a character
}

TEST(ConnectionTargetTest, FindsServerAndDatabase) {
  const ConnectionTarget target =
      ConnectionTarget::Parse("Provider=SQLOLEDB;OLE DB Services = -2;Data Source=PC1\\QBX;Initial Catalog=My Garage;");
  EXPECT_EQ(target.server, "PC1\\QBX");
  EXPECT_EQ(target.database, "My Garage");
  EXPECT_TRUE(ConnectionTarget::Parse("Data Source=;Initial Catalog=master;").server.isEmpty());
}

}  // namespace
}  // namespace qbx
