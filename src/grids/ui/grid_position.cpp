#include "grids/ui/grid_position.h"

#include <QHeaderView>
#include <QTableView>

namespace qbx {
namespace {

/// The width of a column; that of a hidden one is known only while it is shown.
int WidthOf(QHeaderView& header, int column) {
  if (!header.isSectionHidden(column)) return header.sectionSize(column);
  header.showSection(column);
  const int width = header.sectionSize(column);
  header.hideSection(column);
  return width;
}

}  // namespace

void gridSavePosition(RegistryValues& registry, const QString& window, bool leaveOutVisibility, QTableView& grid,
                      const KeptColumns& kept) {
  QHeaderView& header = *grid.horizontalHeader();
  GridLayout layout;
  for (int position = 0; position < header.count(); ++position) {
    const int column = header.logicalIndex(position);
    if (!kept.columns.contains(column)) continue;
    const QString field = kept.fields.value(column);
    GridColumnPlace place{position, column, WidthOf(header, column), std::nullopt, field};
    if (!leaveOutVisibility && !kept.fixed.contains(field.toLower())) place.visible = !header.isSectionHidden(column);
    layout.places.push_back(place);
  }
  SaveGridLayout(registry, GridLayoutKey(window, grid.objectName()), layout, header.count());
}

int InitGridPosition(RegistryValues& registry, const QString& window, QTableView& grid, KeptColumns& kept,
                     QSet<QString>& hidden) {
  QHeaderView& header = *grid.horizontalHeader();
  const GridLayout layout = LoadGridLayout(registry, GridLayoutKey(window, grid.objectName()), kept.fields);
  int position = 0;
  for (const int column : ColumnOrder(layout, header.count()))
    header.moveSection(header.visualIndex(column), position++);
  kept.columns.clear();
  hidden.clear();
  for (const GridColumnPlace& place : layout.places) {
    kept.columns.insert(place.column);
    if (place.width > 0) header.resizeSection(place.column, place.width);
    const QString field = kept.fields.value(place.column).toLower();
    if (place.visible == false && !kept.fixed.contains(field)) hidden.insert(field);
  }
  return layout.rowHeight;
}

}  // namespace qbx
