#include "grids/ui/grid_core.h"

#include <QHeaderView>

#include "grids/grid_sort.h"

namespace qbx {

int GridCore::SortedColumn() const {
  const GridSort sort = ParseSort(sortString);
  return sort.column.isEmpty() ? -1 : model.ColumnOf(sort.column);
}

bool GridCore::Guarded(const char* routine, const std::function<void()>& work) {
  try {
    work();
    return true;
  } catch (const std::exception& error) {
    diagnostics.errors.ShowError(0, QLatin1String(routine), QString::fromUtf8(error.what()));
    return false;
  }
}

void GridCore::Say(const QString& text, MessageIcon icon) {
  diagnostics.ui.ShowMessage({.text = text, .icon = icon, .defaultAnswer = MessageAnswer::kOk});
}

std::vector<int> GridCore::ShownColumns() const {
  std::vector<int> shown;
  if (!view) return shown;
  const QHeaderView& header = *view->horizontalHeader();
  for (int position = 0; position < header.count(); ++position) {
    const int column = header.logicalIndex(position);
    if (!header.isSectionHidden(column)) shown.push_back(column);
  }
  return shown;
}

}  // namespace qbx
