#include "grids/grid_columns.h"

#include <QStringList>
#include <algorithm>
#include <utility>

namespace qbx {
namespace {

constexpr int kMostDecimals = 10;
constexpr int kMostScale = 254;
constexpr int kPrecisionToTheMinute = 16;
constexpr qint64 kDay = 86'400'000;

GridFormat FormatOf(const Column& column) {
  switch (column.type) {
    case ValueType::kBool:
      return GridFormat::kTick;
    case ValueType::kDouble:
    case ValueType::kDecimal:
      return column.scale >= 1 && column.scale <= kMostScale ? GridFormat::kFixed : GridFormat::kPlain;
    case ValueType::kDateTime:
      if (column.precision <= 0) return GridFormat::kPlain;
      return column.precision <= kPrecisionToTheMinute ? GridFormat::kDate : GridFormat::kDateTime;
    default:
      return GridFormat::kPlain;
  }
}

/// Writes a number with a fixed number of digits.
QChar* Digits(QChar* to, int number, int digits) {
  for (int i = digits - 1; i >= 0; --i, number /= 10)
    to[i] = QChar(static_cast<char16_t>(u'0' + number % 10));
  return to + digits;
}

QString DateText(qint64 milliseconds, GridFormat format) {
  qint64 days = milliseconds / kDay;
  qint64 time = milliseconds % kDay;
  if (time < 0) {
    --days;
    time += kDay;
  }
  const QDate date = QDate(1970, 1, 1).addDays(days);
  QChar text[19];
  QChar* to = Digits(text, date.day(), 2);
  *to++ = u'/';
  to = Digits(to, date.month(), 2);
  *to++ = u'/';
  to = Digits(to, date.year(), 4);
  if (format == GridFormat::kDateTime || (format == GridFormat::kPlain && time != 0)) {
    const int seconds = static_cast<int>(time / 1000);
    *to++ = u' ';
    to = Digits(to, seconds / 3600, 2);
    *to++ = u':';
    to = Digits(to, seconds / 60 % 60, 2);
    *to++ = u':';
    to = Digits(to, seconds % 60, 2);
  }
  return QString(text, to - text);
}

/// A decimal number with all its places.
QString FixedText(qint64 unscaled, int scale) {
  QString digits = QString::number(unscaled < 0 ? -unscaled : unscaled).rightJustified(scale + 1, u'0');
  digits.insert(digits.size() - scale, u'.');
  return unscaled < 0 ? u'-' + digits : digits;
}

bool IsTrue(const Cell& cell) {
  switch (cell.type) {
    case ValueType::kDouble:
      return cell.real != 0;
    case ValueType::kText:
      return cell.ToValue().ToBool();
    default:
      return cell.integer != 0;
  }
}

std::optional<Value> NumberValue(const QString& text, const GridColumn& column) {
  bool ok = false;
  if (column.type == ValueType::kInt) {
    const qint64 number = text.toLongLong(&ok);
    return ok ? std::optional<Value>(number) : std::nullopt;
  }
  const double number = text.toDouble(&ok);
  return ok ? std::optional<Value>(number) : std::nullopt;
}

}  // namespace

std::vector<GridColumn> gridFormatColumns(const std::vector<Column>& columns, const QString& highlightedColumns) {
  std::vector<GridColumn> formatted;
  formatted.reserve(columns.size());
  for (const Column& column : columns) {
    GridColumn& to = formatted.emplace_back();
    to.field = column.name;
    to.heading = column.name;
    to.heading.replace(u'_', u' ');
    to.type = column.type;
    to.format = FormatOf(column);
    to.decimals = std::clamp(column.scale, 0, kMostDecimals);
    to.highlighted = highlightedColumns.contains(u'[' + column.name + u']', Qt::CaseInsensitive);
  }
  return formatted;
}

QString GridText(const Cell& cell, const GridColumn& column) {
  if (cell.type == ValueType::kNull) return {};
  if (column.format == GridFormat::kTick) return IsTrue(cell) ? QStringLiteral("Yes") : QStringLiteral("No");
  switch (cell.type) {
    case ValueType::kText:
      return QString::fromUtf8(cell.utf8.data(), static_cast<qsizetype>(cell.utf8.size()));
    case ValueType::kInt:
      return QString::number(cell.integer);
    case ValueType::kDateTime:
      return DateText(cell.integer, column.format);
    case ValueType::kDouble:
    case ValueType::kDecimal:
      if (column.format != GridFormat::kFixed) return cell.ToValue().ToText();
      if (cell.type == ValueType::kDecimal && cell.scale == column.decimals) return FixedText(cell.integer, cell.scale);
      return QString::number(cell.ToValue().ToDouble(), 'f', column.decimals);
    default:
      return cell.ToValue().ToText();
  }
}

QString OneLine(const QString& text) {
  const auto breaks = [](QChar c) { return c == u'\r' || c == u'\n' || c == QChar::LineSeparator; };
  if (std::none_of(text.begin(), text.end(), breaks)) return text;
  QStringList lines;
  QString line;
  for (const QChar c : text + u'\n') {
    if (!breaks(c)) {
      line += c;
    } else if (const QString done = std::exchange(line, QString()).trimmed(); !done.isEmpty()) {
      lines += done;
    }
  }
  return lines.join(QLatin1String(", "));
}

std::optional<Value> GridValue(const QString& text, const GridColumn& column) {
  const QString trimmed = text.trimmed();
  if (trimmed.isEmpty()) return Value::Null();
  if (column.IsNumber()) return NumberValue(trimmed, column);
  if (column.type == ValueType::kBool) {
    const bool yes = trimmed.compare(QLatin1String("yes"), Qt::CaseInsensitive) == 0;
    if (!yes && trimmed.compare(QLatin1String("no"), Qt::CaseInsensitive) != 0) return std::nullopt;
    return Value(yes);
  }
  if (column.type != ValueType::kDateTime) return Value(text);
  for (const char* format : {"d/M/yyyy", "d/M/yyyy H:mm", "d/M/yyyy H:mm:ss"}) {
    const QDateTime when = QDateTime::fromString(trimmed, QLatin1String(format));
    if (when.isValid()) return Value(when);
  }
  return std::nullopt;
}

}  // namespace qbx
