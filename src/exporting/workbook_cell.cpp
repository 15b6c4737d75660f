#include "exporting/workbook_cell.h"

#include <algorithm>
#include <cmath>

#include "exporting/cell_date.h"
#include "util/text.h"

namespace qbx {

namespace {

using Kind = WorkbookCell::Kind;

constexpr qint64 kMostExact = qint64{1} << 53;  // the largest whole number up to which a double is exact
constexpr double kDay = 86'400'000;

/// Whether nothing in a text must be changed; true for nearly every text.
bool IsPlain(std::string_view text) {
  return text.size() <= static_cast<std::size_t>(kLongestCellText) &&
         std::ranges::all_of(text, [](char c) { return c >= 0x20 && c < 0x7F; });
}

/// The text without characters that neither XML nor the strings of the libraries can hold, and with the line breaks of
/// cells.
QString Storable(std::string_view utf8) {
  QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
  text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
  return text.removeIf([](QChar c) { return c.isNull() || c == QChar(0xFFFE) || c == QChar(0xFFFF); });
}

/// The day number of workbooks, which count a 29 February 1900.
double DayNumber(const QDate& day) {
  const qint64 days = QDate(1899, 12, 31).daysTo(day);
  constexpr qint64 kLastRightDay = 59;
  return static_cast<double>(days > kLastRightDay ? days + 1 : days);
}

}  // namespace

WorkbookCell WorkbookCells::Text(std::string_view text) {
  if (text.empty()) return {};
  bool isCut = false;
  if (IsPlain(text)) {
    text_.assign(text);
  } else {
    const QString storable = Storable(text);
    const QString cut = CutText(storable, kLongestCellText);
    isCut = cut.size() < storable.size();
    text_ = cut.toStdString();
  }
  return {.kind = text_.empty() ? Kind::kEmpty : Kind::kText, .text = text_, .isCut = isCut};
}

WorkbookCell WorkbookCells::Integer(qint64 number) {
  if (number > kMostExact || number < -kMostExact) return Text(std::to_string(number));
  return {.kind = Kind::kInteger, .number = static_cast<double>(number), .text = {}};
}

WorkbookCell WorkbookCells::Date(const Cell& cell) {
  const CellDate date = DateOf(cell);
  if (date.day.year() < 1900 || date.day.year() > 9999) return Text(cell.ToValue().ToText().toStdString());
  return {.kind = date.milliseconds == 0 ? Kind::kDate : Kind::kDateTime,
          .number = DayNumber(date.day) + date.milliseconds / kDay,
          .text = {}};
}

WorkbookCell WorkbookCells::Heading(const ExportColumn& column) {
  return Text(column.heading.toStdString());
}

WorkbookCell WorkbookCells::At(qint64 row, const ExportColumn& column) {
  const Cell cell = sheet_.At(row, column);
  switch (cell.type) {
    case ValueType::kText:
      return Text(cell.utf8);
    case ValueType::kInt:
      return Integer(cell.integer);
    case ValueType::kDateTime:
      return Date(cell);
    case ValueType::kBool:
      return {.kind = Kind::kTick, .number = cell.integer != 0 ? 1.0 : 0.0, .text = {}};
    case ValueType::kDouble:
    case ValueType::kDecimal: {
      const double number = cell.ToValue().ToDouble();
      return {.kind = Kind::kDecimal, .number = std::isfinite(number) ? number : 0, .text = {}};
    }
    case ValueType::kNull:
      break;
  }
  switch (column.type) {
    case ExportType::kInteger:
      return {.kind = Kind::kInteger, .text = {}};
    case ExportType::kDecimal:
      return {.kind = Kind::kDecimal, .text = {}};
    case ExportType::kTick:
      return {.kind = Kind::kTick, .text = {}};
    default:
      return {};
  }
}

std::string DecimalFormat(int decimals) {
  return "0." + std::string(static_cast<std::size_t>(decimals), '0');
}

QString SheetName(const QString& title) {
  constexpr int kLongestName = 31;
  QString name = QLatin1String("QBX Data - ") + title;
  std::ranges::replace_if(
      name, [](QChar c) { return c < u' ' || QStringLiteral("[]:*?/\\").contains(c); }, QChar(u'-'));
  name = CutText(name, kLongestName).trimmed();
  while (name.endsWith(u'\''))
    name.chop(1);
  return name;
}

}  // namespace qbx
