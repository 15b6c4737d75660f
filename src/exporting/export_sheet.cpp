#include "exporting/export_sheet.h"

#include <algorithm>

namespace qbx {

namespace {

constexpr int kNumberWidth = 11;
constexpr int kTickWidth = 8;
constexpr int kDateWidth = 12;
constexpr int kTextWidth = 12;
constexpr int kMostTextWidth = 30;
constexpr int kFilterButton = 3;  // number of characters that the button beside a heading covers

ExportType TypeOf(ValueType type) {
  switch (type) {
    case ValueType::kInt:
      return ExportType::kInteger;
    case ValueType::kDouble:
    case ValueType::kDecimal:
      return ExportType::kDecimal;
    case ValueType::kDateTime:
      return ExportType::kDate;
    case ValueType::kBool:
      return ExportType::kTick;
    default:
      return ExportType::kText;
  }
}

int WidthOf(ExportType type, int size) {
  switch (type) {
    case ExportType::kTick:
      return kTickWidth;
    case ExportType::kDate:
      return kDateWidth;
    case ExportType::kText:
      return std::clamp(size, kTextWidth, kMostTextWidth);
    default:
      return kNumberWidth;
  }
}

}  // namespace

ExportColumn MakeExportColumn(const std::vector<Column>& columns, int field, const QString& heading) {
  const Column& column = columns[static_cast<std::size_t>(field)];
  const ExportType type = TypeOf(column.type);
  return {.field = field,
          .heading = heading,
          .type = type,
          .width = std::max(WidthOf(type, column.size), static_cast<int>(heading.size()) + kFilterButton),
          .decimals = type == ExportType::kDecimal ? std::max(column.scale, 0) : 0};
}

}  // namespace qbx
