#include "grids/grid_find.h"

#include <QByteArray>

#include "database/text_compare.h"

namespace qbx {
namespace {

bool IsNumber(ValueType type) {
  return type != ValueType::kNull && type != ValueType::kText && type != ValueType::kDateTime;
}

double NumberOf(const Cell& cell) {
  return cell.type == ValueType::kInt || cell.type == ValueType::kBool ? static_cast<double>(cell.integer)
                                                                       : cell.ToValue().ToDouble();
}

}  // namespace

qint64 FindStart(const Recordset& rows, int column, const GridColumn& format, const QString& start) {
  if (start.isEmpty() || column < 0) return -1;
  const QByteArray utf8 = start.toUtf8();
  const std::string_view sought(utf8.constData(), static_cast<std::size_t>(utf8.size()));
  const qint64 count = rows.RecordCount();
  for (qint64 row = 0; row < count; ++row) {
    const Cell cell = rows.At(row, column);
    if (cell.type == ValueType::kText && format.format == GridFormat::kPlain) {
      if (StartsWithNoCase(cell.utf8, sought)) return row;
    } else if (cell.type != ValueType::kNull && GridText(cell, format).startsWith(start, Qt::CaseInsensitive)) {
      return row;
    }
  }
  return -1;
}

qint64 FindValue(const Recordset& rows, int column, const Value& value) {
  if (column < 0) return -1;
  const QByteArray utf8 = value.Type() == ValueType::kText ? value.ToText().toUtf8() : QByteArray();
  const std::string_view text(utf8.constData(), static_cast<std::size_t>(utf8.size()));
  const double number = value.ToDouble();
  const qint64 count = rows.RecordCount();
  for (qint64 row = 0; row < count; ++row) {
    const Cell cell = rows.At(row, column);
    if (cell.type == ValueType::kText && value.Type() == ValueType::kText) {
      if (CompareNoCase(cell.utf8, text) == 0) return row;
    } else if (IsNumber(cell.type) && IsNumber(value.Type())) {
      if (NumberOf(cell) == number) return row;
    } else if (cell.type == value.Type() && cell.ToValue() == value) {
      return row;
    }
  }
  return -1;
}

}  // namespace qbx
