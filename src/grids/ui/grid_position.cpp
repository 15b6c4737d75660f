// The column layout of a table view: taken down and put back.

#include "grids/ui/grid_position.h"

#include <QtWidgets>

namespace qbx {
namespace {

/// The width of a hidden column is known only while it is shown.
int WidthOf(QHeaderView& header, int column) {
  if (!header.isSectionHidden(column)) return header.sectionSize(column);
  header.showSection(column);
  const int width = header.sectionSize(column);
  header.hideSection(column);
  return width;
}

}  // namespace

void gridSavePosition(RegistryValues& registry, const QString& window, bool leaveOutVisibility, QTableView& grid,
                      const QSet<int>& columns) {
  QHeaderView& header = *grid.horizontalHeader();
  GridLayout layout;
  for (int position = 0; position < header.count(); ++position) {
    const int column = header.logicalIndex(position);
    if (!columns.contains(column)) continue;
    GridColumnPlace place{position, column, WidthOf(header, column), std::nullopt};
    if (!leaveOutVisibility) place.visible = !header.isSectionHidden(column);
    layout.places.push_back(place);
  }
  SaveGridLayout(registry, GridLayoutKey(window, grid.objectName()), layout, header.count());
}

int InitGridPosition(RegistryValues& registry, const QString& window, QTableView& grid, QSet<int>& columns) {
  QHeaderView& header = *grid.horizontalHeader();
  const GridLayout layout = LoadGridLayout(registry, GridLayoutKey(window, grid.objectName()), header.count());
  int position = 0;
  for (const int column : ColumnOrder(layout, header.count()))
    header.moveSection(header.visualIndex(column), position++);
  columns.clear();
  for (const GridColumnPlace& place : layout.places) {
    columns.insert(place.column);
    if (place.width > 0) header.resizeSection(place.column, place.width);
    if (place.visible) header.setSectionHidden(place.column, !*place.visible);
  }
  return layout.rowHeight;
}

}  // namespace qbx
