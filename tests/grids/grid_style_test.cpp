// Colours, fonts and texts of cells.

#include "grids/ui/grid_style.h"

#include <gtest/gtest.h>

#include "grids/grid_columns.h"
#include "grids/grid_statements.h"
#include "support/printing.h"

namespace qbx {
namespace {

QPalette PaletteOf(const QColor& base, const QColor& text) {
  QPalette palette;
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::AlternateBase, base);
  palette.setColor(QPalette::Text, text);
  return palette;
}

TEST(GridStyle, ColoursThatCannotBeReadGiveWay) {
  const QPalette light = PaletteOf(Qt::white, Qt::black);
  const QPalette dark = PaletteOf(QColor(30, 30, 30), Qt::white);
  struct Case {
    const char* name;
    int background;
    int foreground;
    const QPalette& palette;
    QColor wantBackground;
    QColor wantForeground;
  };
  for (const Case& each : std::initializer_list<Case>{
           {"red is in the lowest byte", 0xC0FFFF, 0x800000, light, QColor(255, 255, 192), QColor(0, 0, 128)},
           {"never set", 0, 0, light, Qt::white, Qt::black},
           {"the same twice", 0x808080, 0x828282, light, Qt::white, Qt::black},
           {"black on purpose", 0, 0xFFFFFF, light, Qt::black, Qt::white},
           {"first colours on a dark desktop", 0xFFFFFF, 0, dark, QColor(30, 30, 30), Qt::white},
           {"own colours on a dark desktop", 0xC0FFFF, 0, dark, QColor(255, 255, 192), Qt::black},
       }) {
    UserOptions options;
    options.GRID_ODD_BACKCOLOUR = each.background;
    options.GRID_ODD_FORECOLOUR = each.foreground;
    const GridStyle style = StylesOf(options, each.palette, QFont()).odd;
    EXPECT_EQ(style.background, each.wantBackground) << each.name;
    EXPECT_EQ(style.foreground, each.wantForeground) << each.name;
  }
}

TEST(GridStyle, AFontWithoutNameOrSizeIsTheWindows) {
  const QFont window("Serif", 13);
  UserOptions options;
  options.GRID_LINEFONT_BOLD = true;
  QFont font = StylesOf(options, {}, window).odd.font;
  EXPECT_EQ(font.family(), window.family());
  EXPECT_EQ(font.pointSize(), 13);
  EXPECT_TRUE(font.bold());
  options.GRID_LINEFONT = "Tahoma";
  options.GRID_LINEFONT_SIZE = 8;
  font = StylesOf(options, {}, window).even.font;
  EXPECT_EQ(font.family(), "Tahoma");
  EXPECT_EQ(font.pointSize(), 8);
}

TEST(GridColumns, CellsAsTheyAreShown) {
  const auto shown = [](const Column& column, const Value& value) {
    Cell cell;
    cell.type = value.Type();
    cell.integer = value.Type() == ValueType::kDecimal ? value.Unscaled() : value.ToInt();
    cell.real = value.ToDouble();
    cell.scale = static_cast<quint8>(value.Scale());
    if (value.Type() == ValueType::kDateTime) cell.integer = value.ToDateTime().toMSecsSinceEpoch();
    return GridText(cell, gridFormatColumns({column}).front());
  };
  const auto date = [](int precision) {
    return Column{.name = "D", .type = ValueType::kDateTime, .precision = precision};
  };
  const auto number = [](int scale) { return Column{.name = "N", .type = ValueType::kDecimal, .scale = scale}; };
  const Value evening(QDateTime(QDate(1969, 3, 4), QTime(21, 5, 6), Qt::UTC));
  const Value midnight(QDateTime(QDate(2026, 12, 1), QTime(0, 0), Qt::UTC));
  EXPECT_EQ(shown(date(16), evening), "04/03/1969");
  EXPECT_EQ(shown(date(23), evening), "04/03/1969 21:05:06");
  EXPECT_EQ(shown(date(23), midnight), "01/12/2026 00:00:00");
  EXPECT_EQ(shown(date(0), midnight), "01/12/2026");
  EXPECT_EQ(shown(number(2), Value::Decimal(-5, 2)), "-0.05");
  EXPECT_EQ(shown(number(12), Value(0.5)), "0.5000000000") << "ten decimals at most";
  EXPECT_EQ(shown(number(2), Value()), QString());
  EXPECT_EQ(shown({.name = "B", .type = ValueType::kBool}, Value(false)), "No");
  EXPECT_EQ(OneLine("\r\nThe Laurels\r\n\r\n2 High St\n"), "The Laurels, 2 High St");
}

TEST(GridStatements, KeysThatAreNoNumbersAreQuoted) {
  EXPECT_EQ(DeleteRowStatement("Campaign_Results", {Value(12)}), "proc_delp_Campaign_Results ( 12 )");
  EXPECT_EQ(DeleteRowStatement("X", {Value(QString("O'Neil")), Value(-3), Value()}),
            "proc_delp_X ( 'O''Neil', -3, NULL )");
  EXPECT_EQ(InsertRowStatement("X", 5, 6, "'a'"), "proc_addp_X_InsertRow ( 5, 6, 'a')");
}

}  // namespace
}  // namespace qbx
