// The data grid: where the user is, and moving there.

#include <QtWidgets>

#include "grids/grid_find.h"
#include "grids/ui/grid_model.h"
#include "grids/ui/grid_place.h"

namespace qbx {

qint64 cDataGrid::RowCount() const {
  return model_->rowCount();
}

qint64 cDataGrid::CurrentRow() const {
  return view_ ? view_->currentIndex().row() : -1;
}

QString cDataGrid::CurrentField() const {
  const GridColumn* column = view_ ? model_->ColumnAt(view_->currentIndex().column()) : nullptr;
  return column == nullptr ? QString() : column->field;
}

qint64 cDataGrid::FirstVisibleRow() const {
  return view_ ? view_->rowAt(0) : -1;
}

QString cDataGrid::CellText(qint64 row, const QString& field) const {
  const int column = model_->ColumnOf(field);
  const GridColumn* format = model_->ColumnAt(column);
  return format == nullptr ? QString() : GridText(records_->At(row, column), *format);
}

void cDataGrid::SetLineID(const QString& field) {
  lineIdColumn_ = field;
}

std::vector<int> cDataGrid::LineIdColumns() const {
  std::vector<int> columns;
  for (const QString& name : lineIdColumn_.split(u',', Qt::SkipEmptyParts)) {
    if (const int column = model_->ColumnOf(name.trimmed()); column >= 0) columns.push_back(column);
  }
  return columns;
}

qint64 cDataGrid::RecordID() const {
  const std::vector<Value> key = KeyOf(CurrentRow());
  return key.empty() ? 0 : key.front().ToInt();
}

std::vector<Value> cDataGrid::KeyOf(qint64 row) const {
  std::vector<Value> key;
  if (records_ == nullptr || row < 0) return key;
  for (const int column : LineIdColumns())
    key.push_back(records_->At(row, column).ToValue());
  return key;
}

/// \param hint  where the row was; tried first
qint64 cDataGrid::RowOfKey(const std::vector<Value>& key, qint64 hint) const {
  if (key.empty()) return hint < RowCount() ? hint : -1;
  if (KeyOf(hint) == key) return hint;
  const std::vector<int> columns = LineIdColumns();
  if (columns.size() != key.size()) return -1;
  if (key.size() == 1) return FindValue(*records_, columns.front(), key.front());
  for (qint64 row = 0; row < RowCount(); ++row) {
    if (KeyOf(row) == key) return row;
  }
  return -1;
}

cDataGrid::Place cDataGrid::Remember() const {
  Place place;
  place.firstVisible = std::max<qint64>(0, FirstVisibleRow());
  const int last = view_->rowAt(view_->viewport()->height() - 1);
  const qint64 end = last >= 0 ? last : RowCount() - 1;
  for (qint64 row = place.firstVisible; row <= end; ++row) {
    if (row != CurrentRow()) place.visible.push_back({row, KeyOf(row)});
  }
  place.current = {CurrentRow(), KeyOf(CurrentRow())};
  if (const qint64 selected = SelectedCount(); selected > 1 && selected <= kFewRows) {
    for (const qint64 row : SelectedRows())
      place.selected.push_back({row, KeyOf(row)});
  }
  place.column = view_->currentIndex().column();
  place.horizontal = view_->horizontalScrollBar()->value();
  return place;
}

void cDataGrid::Restore(const Place& place) {
  qint64 first = place.firstVisible;
  for (const Place::Row& row : place.visible) {
    const qint64 now = RowOfKey(row.key, row.row);
    if (now < 0) continue;
    first = now - (row.row - place.firstVisible);
    break;
  }
  qint64 current = RowOfKey(place.current.key, place.current.row);
  if (current < 0) current = std::min(place.current.row, RowCount() - 1);
  SetCurrent(current, place.column);
  QItemSelection selection;
  for (const qint64 row : RowsOf(place))
    selection.select(model_->index(static_cast<int>(row), 0), model_->index(static_cast<int>(row), 0));
  if (!selection.isEmpty())
    view_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  SetFirstVisibleRow(first);
  view_->horizontalScrollBar()->setValue(place.horizontal);
}

/// Where the rows are now that were selected. Rows that moved are looked for together, since each search walks all rows.
std::vector<qint64> cDataGrid::RowsOf(const Place& place) const {
  const auto textOf = [](const std::vector<Value>& key) {
    QString text;
    for (const Value& value : key)
      text += value.ToText() + u'\n';
    return text;
  };
  std::vector<qint64> rows;
  QSet<QString> moved;
  for (const Place::Row& row : place.selected) {
    if (row.key.empty()) continue;
    if (KeyOf(row.row) == row.key)
      rows.push_back(row.row);
    else
      moved.insert(textOf(row.key));
  }
  for (qint64 row = 0; row < RowCount() && !moved.isEmpty(); ++row) {
    if (moved.remove(textOf(KeyOf(row)))) rows.push_back(row);
  }
  return rows;
}

/// Makes a cell current and its row the selected one, without scrolling.
void cDataGrid::SetCurrent(qint64 row, int column) {
  if (!view_ || row < 0 || row >= RowCount() || column < 0) return;
  const bool scrolls = view_->hasAutoScroll();
  view_->setAutoScroll(false);
  view_->selectionModel()->setCurrentIndex(model_->index(static_cast<int>(row), column),
                                           QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  view_->setAutoScroll(scrolls);
}

void cDataGrid::SetFirstVisibleRow(qint64 row) {
  if (!view_ || RowCount() == 0) return;
  view_->doItemsLayout();  // the scroll bar reaches as far as the rows do only after this
  view_->verticalScrollBar()->setValue(static_cast<int>(std::clamp<qint64>(row, 0, RowCount() - 1)));
}

/// The column itself when it can be current, otherwise the first that is shown.
int cDataGrid::VisibleColumn(int column) const {
  const QHeaderView& header = *view_->horizontalHeader();
  if (column >= 0 && column < header.count() && !header.isSectionHidden(column)) return column;
  for (int position = 0; position < header.count(); ++position) {
    const int logical = header.logicalIndex(position);
    if (!header.isSectionHidden(logical)) return logical;
  }
  return -1;
}

void cDataGrid::MoveTo(qint64 row) {
  if (!view_ || row < 0 || row >= RowCount()) return;
  SetCurrent(row, VisibleColumn(view_->currentIndex().column()));
  view_->scrollTo(view_->currentIndex());
}

bool cDataGrid::FindLine(const QString& field, const Value& value) {
  qint64 row = -1;
  Guarded("FindLine", [&] {
    if (records_ == nullptr) return;
    row = FindValue(*records_, model_->ColumnOf(field), value);
    MoveTo(row);
  });
  return row >= 0;
}

void cDataGrid::HighlightCell(qint64 row, const QString& field) {
  const int column = model_->ColumnOf(field);
  if (!view_ || column < 0 || row < 0 || row >= RowCount()) return;
  SetCurrent(row, column);
  view_->scrollTo(view_->currentIndex());
  view_->selectionModel()->clearSelection();  // the mark would not be seen under the selection
  model_->Highlight(row, column);
}

}  // namespace qbx
