#include "grids/grid_copy.h"

namespace qbx {
QString CopiedRows(const Recordset& records, const std::vector<GridColumn>& columns, const std::vector<int>& shown,
                   const std::vector<qint64>& rows) {
  QString text;
  const auto add = [&text, &shown](const auto& cellOf) {
    for (std::size_t i = 0; i < shown.size(); ++i) {
      if (i > 0) text += u'\t';
      text += OneLine(cellOf(shown[i])).replace(u'\t', u' ');
    }
    text += QLatin1String("\r\n");
  };
  const auto columnAt = [&columns](int column) -> const GridColumn& {
    return columns[static_cast<std::size_t>(column)];
  };
  add([&columnAt](int column) { return columnAt(column).heading; });
  for (const qint64 row : rows)
    add([&](int column) { return GridText(records.At(row, column), columnAt(column)); });
  return text;
}

}  // namespace qbx
