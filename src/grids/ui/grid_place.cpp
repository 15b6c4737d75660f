// The place in a grid: the current cell and scrolling.

#include "grids/ui/grid_place.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QModelIndex>
#include <QScrollBar>
#include <QSet>

#include "grids/grid_find.h"
#include "grids/grid_search.h"

namespace qbx {

qint64 GridPlace::CurrentRow() const {
  return core_.view ? core_.view->currentIndex().row() : -1;
}

QString GridPlace::CurrentField() const {
  const GridColumn* column = core_.view ? core_.model.ColumnAt(core_.view->currentIndex().column()) : nullptr;
  return column == nullptr ? QString() : column->field;
}

qint64 GridPlace::FirstVisibleRow() const {
  return core_.view ? core_.view->rowAt(0) : -1;
}

QString GridPlace::CellText(qint64 row, const QString& field) const {
  const int column = core_.model.ColumnOf(field);
  const GridColumn* format = core_.model.ColumnAt(column);
  return format == nullptr ? QString() : GridText(core_.records->At(row, column), *format);
}

std::vector<int> GridPlace::LineIdColumns() const {
  std::vector<int> columns;
  for (const QString& name : lineIdColumn_.split(u',', Qt::SkipEmptyParts)) {
    if (const int column = core_.model.ColumnOf(name.trimmed()); column >= 0) columns.push_back(column);
  }
  return columns;
}

qint64 GridPlace::RecordID() const {
  const std::vector<Value> key = KeyOf(CurrentRow());
  return key.empty() ? 0 : key.front().ToInt();
}

std::vector<Value> GridPlace::KeyOf(qint64 row) const {
  std::vector<Value> key;
  if (core_.records == nullptr || row < 0) return key;
  for (const int column : LineIdColumns())
    key.push_back(core_.records->At(row, column).ToValue());
  return key;
}

qint64 GridPlace::RowOfKey(const std::vector<Value>& key, qint64 hint) const {
  if (key.empty()) return hint < core_.RowCount() ? hint : -1;
  if (KeyOf(hint) == key) return hint;
  const std::vector<int> columns = LineIdColumns();
  if (columns.size() != key.size()) return -1;
  if (key.size() == 1) return FindValue(*core_.records, columns.front(), key.front());
  for (qint64 row = 0; row < core_.RowCount(); ++row) {
    if (KeyOf(row) == key) return row;
  }
  return -1;
}

GridPlace::Kept GridPlace::Remember() const {
  Kept place;
  place.firstVisible = std::max<qint64>(0, FirstVisibleRow());
  const int last = core_.view->rowAt(core_.view->viewport()->height() - 1);
  const qint64 end = last >= 0 ? last : core_.RowCount() - 1;
  for (qint64 row = place.firstVisible; row <= end; ++row) {
    if (row != CurrentRow()) place.visible.push_back({row, KeyOf(row)});
  }
  place.current = {CurrentRow(), KeyOf(CurrentRow())};
  if (const qint64 selected = SelectedCount(); selected > 1 && selected == core_.RowCount()) {
    place.all = selected;
  } else if (selected > 1 && selected <= kKeptSelected) {
    for (const qint64 row : SelectedRows())
      place.selected.push_back({row, KeyOf(row)});
  }
  place.column = core_.view->currentIndex().column();
  place.horizontal = core_.view->horizontalScrollBar()->value();
  return place;
}

/// A selection with neighbouring rows in one range, because many ranges are slow.
QItemSelection GridPlace::SelectionOf(std::vector<qint64> rows) const {
  std::sort(rows.begin(), rows.end());
  QItemSelection selection;
  for (auto first = rows.begin(); first != rows.end();) {
    auto last = first;
    while (last + 1 != rows.end() && *(last + 1) == *last + 1)
      ++last;
    selection.select(core_.model.index(static_cast<int>(*first), 0), core_.model.index(static_cast<int>(*last), 0));
    first = last + 1;
  }
  return selection;
}

void GridPlace::Restore(const Kept& place) {
  qint64 first = place.firstVisible;
  for (const Kept::Row& row : place.visible) {
    const qint64 now = RowOfKey(row.key, row.row);
    if (now < 0) continue;
    first = now - (row.row - place.firstVisible);
    break;
  }
  qint64 current = RowOfKey(place.current.key, place.current.row);
  if (current < 0) current = std::min(place.current.row, core_.RowCount() - 1);
  SetCurrent(current, place.column);
  const QItemSelection selection =
      place.all > 0 && core_.RowCount() <= place.all ? AllCells() : SelectionOf(RowsOf(place));
  if (!selection.isEmpty())
    core_.view->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  SetFirstVisibleRow(first);
  core_.view->horizontalScrollBar()->setValue(place.horizontal);
}

/// The present places of rows that were selected. Rows that have moved are searched for together, because each search
/// visits all rows.
std::vector<qint64> GridPlace::RowsOf(const Kept& place) const {
  const auto textOf = [](const std::vector<Value>& key) {
    QString text;
    for (const Value& value : key)
      text += value.ToText() + u'\n';
    return text;
  };
  std::vector<qint64> rows;
  QSet<QString> moved;
  for (const Kept::Row& row : place.selected) {
    if (row.key.empty()) continue;
    if (KeyOf(row.row) == row.key)
      rows.push_back(row.row);
    else
      moved.insert(textOf(row.key));
  }
  for (qint64 row = 0; row < core_.RowCount() && !moved.isEmpty(); ++row) {
    if (moved.remove(textOf(KeyOf(row)))) rows.push_back(row);
  }
  return rows;
}

void GridPlace::SetCurrent(qint64 row, int column) {
  if (!core_.view || row < 0 || row >= core_.RowCount() || column < 0) return;
  const bool scrolls = core_.view->hasAutoScroll();
  core_.view->setAutoScroll(false);
  core_.view->selectionModel()->setCurrentIndex(core_.model.index(static_cast<int>(row), column),
                                                QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  core_.view->setAutoScroll(scrolls);
}

void GridPlace::SetFirstVisibleRow(qint64 row) {
  if (!core_.view || core_.RowCount() == 0) return;
  core_.view->doItemsLayout();  // the range of the scroll bar is correct only after this
  core_.view->verticalScrollBar()->setValue(static_cast<int>(std::clamp<qint64>(row, 0, core_.RowCount() - 1)));
}

int GridPlace::VisibleColumn(int column) const {
  const QHeaderView& header = *core_.view->horizontalHeader();
  if (column >= 0 && column < header.count() && !header.isSectionHidden(column)) return column;
  for (int position = 0; position < header.count(); ++position) {
    const int logical = header.logicalIndex(position);
    if (!header.isSectionHidden(logical)) return logical;
  }
  return -1;
}

void GridPlace::LeaveHiddenColumn() {
  const QModelIndex current = core_.view->currentIndex();
  if (!current.isValid()) return;
  core_.view->selectionModel()->setCurrentIndex(current.siblingAtColumn(VisibleColumn(current.column())),
                                                QItemSelectionModel::NoUpdate);
}

void GridPlace::MoveTo(qint64 row) {
  if (!core_.view || row < 0 || row >= core_.RowCount()) return;
  SetCurrent(row, VisibleColumn(core_.view->currentIndex().column()));
  core_.view->scrollTo(core_.view->currentIndex());
}

bool GridPlace::FindLine(const QString& field, const Value& value) {
  qint64 row = -1;
  core_.Guarded("FindLine", [&] {
    if (core_.records == nullptr) return;
    row = FindValue(*core_.records, core_.model.ColumnOf(field), value);
    MoveTo(row);
  });
  return row >= 0;
}

bool GridPlace::FindText(const QString& text, Search search) {
  FoundCell found;
  core_.Guarded("FindText", [&] {
    if (core_.records == nullptr || !core_.view) return;
    const qint64 from = CurrentRow() + (search == Search::kNext ? 1 : search == Search::kPrevious ? -1 : 0);
    found = qbx::FindText(*core_.records, core_.model.Columns(), core_.ShownColumns(), text, from,
                          search == Search::kPrevious);
    if (found.row < 0) return;
    SetCurrent(found.row, found.column);
    core_.view->scrollTo(core_.view->currentIndex());
  });
  return found.row >= 0;
}

void GridPlace::HighlightCell(qint64 row, const QString& field) {
  const int column = core_.model.ColumnOf(field);
  if (!core_.view || column < 0 || row < 0 || row >= core_.RowCount()) return;
  SetCurrent(row, column);
  core_.view->scrollTo(core_.view->currentIndex());
  core_.view->selectionModel()->clearSelection();  // the selection would hide the mark
  core_.model.Highlight(row, column);
}

}  // namespace qbx
