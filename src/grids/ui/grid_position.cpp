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

void gridSavePosition(RegistryValues& registry, const QString& window, bool leaveOutVisibility, QTableView& grid) {
  QHeaderView& header = *grid.horizontalHeader();
  GridLayout layout;
  for (int position = 0; position < header.count(); ++position) {
    const int column = header.logicalIndex(position);
    GridColumnPlace place{column, WidthOf(header, column), std::nullopt};
    if (!leaveOutVisibility) place.visible = !header.isSectionHidden(column);
    layout.places.push_back(place);
  }
  SaveGridLayout(registry, GridLayoutKey(window, grid.objectName()), layout);
}

int InitGridPosition(RegistryValues& registry, const QString& window, QTableView& grid) {
  QHeaderView& header = *grid.horizontalHeader();
  const GridLayout layout = LoadGridLayout(registry, GridLayoutKey(window, grid.objectName()));
  int position = 0;
  for (const GridColumnPlace& place : layout.places) {
    if (place.column >= header.count()) continue;
    header.moveSection(header.visualIndex(place.column), position++);
    if (place.width > 0) header.resizeSection(place.column, place.width);
    if (place.visible) header.setSectionHidden(place.column, !*place.visible);
  }
  return layout.rowHeight;
}

}  // namespace qbx
