// What copying from a grid puts on the clipboard.

#include "grids/grid_copy.h"

namespace qbx {
namespace {

QString OneLine(QString text) {
  text.replace(QLatin1String("\r\n"), QLatin1String(" "));
  for (const QChar breaking : {u'\t', u'\r', u'\n'})
    text.replace(breaking, u' ');
  return text;
}

}  // namespace

QString CopiedRows(const Recordset& records, const std::vector<GridColumn>& columns, const std::vector<int>& shown,
                   const std::vector<qint64>& rows) {
  QString text;
  const auto add = [&text, &shown](const auto& cellOf) {
    for (std::size_t i = 0; i < shown.size(); ++i) {
      if (i > 0) text += u'\t';
      text += OneLine(cellOf(shown[i]));
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
