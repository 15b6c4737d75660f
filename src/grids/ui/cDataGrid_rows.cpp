// The data grid: selecting, copying, inserting, deleting and changing rows.

#include <QtWidgets>

#include "diagnostics/message_catalogue.h"
#include "grids/grid_copy.h"
#include "grids/grid_statements.h"
#include "grids/ui/grid_model.h"
#include "grids/ui/grid_place.h"
#include "grids/ui/redraw_off.h"

namespace qbx {
namespace {
constexpr int kMultipleRows = 103;
constexpr int kNothingToSelect = 107;
constexpr int kManyToSelect = 108;
}  // namespace

QItemSelection cDataGrid::AllCells() const {
  return {model_->index(0, 0), model_->index(model_->rowCount() - 1, model_->columnCount() - 1)};
}

void cDataGrid::SelectAll() {
  Guarded("SelectAll", [this] {
    const qint64 count = RowCount();
    if (!view_ || count == 0) return Say(AppMessage(kNothingToSelect), MessageIcon::kExclamation);
    if (count > kFewRows) {
      const MessageAnswer answer =
          diagnostics_.ui.ShowMessage({.text = AppMessage(kManyToSelect, {QString::number(count)}),
                                       .icon = MessageIcon::kQuestion,
                                       .buttons = MessageButtons::kYesNo});
      if (answer != MessageAnswer::kYes || RowCount() == 0) return;
    }
    const RedrawOff redraw(view_);
    SetCurrent(0, VisibleColumn(view_->currentIndex().column()));
    SetFirstVisibleRow(0);
    view_->selectionModel()->select(AllCells(), QItemSelectionModel::ClearAndSelect);
  });
}

void cDataGrid::SelectNone() {
  Guarded("SelectNone", [this] {
    if (view_) view_->selectionModel()->clearSelection();
  });
}

qint64 cDataGrid::SelectedCount() const {
  qint64 count = 0;
  if (!view_) return count;
  for (const QItemSelectionRange& range : view_->selectionModel()->selection())
    count += range.height();
  return count;
}

std::vector<qint64> cDataGrid::SelectedRows() const {
  std::vector<qint64> rows;
  for (const QItemSelectionRange& range : view_->selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row)
      rows.push_back(row);
  }
  std::sort(rows.begin(), rows.end());
  return rows;
}

QString cDataGrid::CopyCellValue() {
  QString text = CurrentRow() < 0 ? QString() : CellText(CurrentRow(), CurrentField());
  if (CurrentRow() >= 0) QGuiApplication::clipboard()->setText(text);
  return text;
}

void cDataGrid::CopyRows() {
  if (!view_ || records_ == nullptr) return;
  const QHeaderView& header = *view_->horizontalHeader();
  std::vector<int> shown;
  for (int position = 0; position < header.count(); ++position) {
    const int column = header.logicalIndex(position);
    if (!header.isSectionHidden(column)) shown.push_back(column);
  }
  diagnostics_.ui.SetBusy(true);
  Guarded("CopyRows", [&] {
    QGuiApplication::clipboard()->setText(CopiedRows(*records_, model_->Columns(), shown, SelectedRows()));
  });
  diagnostics_.ui.SetBusy(false);
}

void cDataGrid::Copy() {
  if (SelectedCount() > 1)
    CopyRows();
  else
    CopyCellValue();
}

bool cDataGrid::BeforeDelete() {
  if (SelectedCount() > 1) {
    Say(AppMessage(kMultipleRows), MessageIcon::kExclamation);
    return false;
  }
  deleteKey_ = KeyOf(CurrentRow());
  return true;
}

bool cDataGrid::AfterDelete() {
  if (storedProc_.isEmpty() || deleteKey_.empty()) return true;
  Connection* transaction = owner_ == nullptr ? nullptr : owner_->ADOConnTrans();
  const auto result = statements_.dbExecute(DeleteRowStatement(storedProc_, deleteKey_), false, transaction);
  dataChanged_ = dataChanged_ || result.Ok();
  return result.Ok();
}

/// The database comes first, so that a row that is still there is never hidden. A grid that is not editable does not
/// reach it.
bool cDataGrid::DeleteInDatabase(qint64 row) {
  if (!EditMode()) return true;
  deleteKey_ = KeyOf(row);
  return AfterDelete();
}

/// Takes rows out of the recordset, in one walk.
/// \param rows  in rising order
void cDataGrid::DropRows(const std::vector<qint64>& rows) {
  auto next = rows.begin();
  records_->MoveFirst();
  for (qint64 row = 0; next != rows.end() && !records_->Eof(); ++row) {
    if (row == *next) {
      records_->Drop();
      ++next;
    } else {
      records_->MoveNext();
    }
  }
}

/// What Ctrl+Delete does: an editable grid deletes one row at a time, any other just stops showing the rows.
void cDataGrid::DeleteSelected() {
  std::vector<qint64> rows = SelectedRows();
  if (rows.empty() && CurrentRow() >= 0) rows = {CurrentRow()};
  if (rows.empty() || records_ == nullptr) return;
  if (EditMode() && (!BeforeDelete() || (owner_ != nullptr && !owner_->MayDeleteRows()))) return;
  if (rows.size() == 1 && CurrentRow() != rows.front()) SetCurrent(rows.front(), view_->currentIndex().column());
  const qint64 recordId = RecordID();
  bool deleted = false;
  const bool done = Guarded("AfterDelete", [&] {
    const RedrawOff redraw(view_);
    deleted = DeleteInDatabase(rows.front());
    if (!deleted) return;
    const Place place = Remember();
    DropRows(rows);
    model_->RowsChanged();
    Restore(place);
    ShowPanel();
  });
  if (!done) return;
  if (!deleted) {
    Say(QStringLiteral("Error deleting currently selected row. It may have already been deleted."),
        MessageIcon::kInformation);
  } else if (EditMode() && onDeleted_) {
    onDeleted_(recordId);
  }
}

void cDataGrid::DeleteByUser() {
  if (!allowDelete_) return;
  if (allowUpdate_)
    DeleteSelected();
  else
    Say(QStringLiteral("Rows cannot be deleted from this grid."), MessageIcon::kExclamation);
}

void cDataGrid::Remove() {
  if (!view_ || CurrentRow() < 0) return;
  SetCurrent(CurrentRow(), view_->currentIndex().column());
  DeleteSelected();
}

void cDataGrid::RemoveRows() {
  Guarded("RemoveRows", [this] {
    if (!view_ || records_ == nullptr) return;
    if (EditMode() && owner_ != nullptr && !owner_->MayDeleteRows()) return;
    std::vector<qint64> removed;
    {
      const RedrawOff redraw(view_);
      std::vector<qint64> rows;
      for (qint64 row = 0; row < RowCount() && DeleteInDatabase(row); ++row) {
        rows.push_back(row);
        if (const std::vector<Value> key = KeyOf(row); !key.empty()) removed.push_back(key.front().ToInt());
      }
      DropRows(rows);
      model_->RowsChanged();
      SetCurrent(0, VisibleColumn(-1));
      ShowPanel();
    }
    if (!EditMode() || !onDeleted_) return;
    for (const qint64 recordId : removed)
      onDeleted_(recordId);
  });
}

bool cDataGrid::BeforeInsert() const {
  return rowInserts_;
}

void cDataGrid::InsertRow() {
  if (!BeforeInsert())
    return Say(QStringLiteral("Row Inserting is not available on this grid."), MessageIcon::kExclamation);
  const bool ownHeader = owner_ == nullptr || owner_->HeaderID() == 0;
  const QString extra = owner_ == nullptr ? QString() : owner_->sInsertRowExtraParams();
  const QString sql = InsertRowStatement(storedProc_, ownHeader ? headerId_ : owner_->HeaderID(), RecordID(), extra);
  if (!statements_.dbExecute(sql, false, owner_ == nullptr ? nullptr : owner_->ADOConnTrans()).Ok()) {
    return Say(QStringLiteral("Error while attempting to insert a row above the current row."),
               MessageIcon::kExclamation);
  }
  dataChanged_ = true;
  Requery();
}

bool cDataGrid::BeforeUpdate() const {
  return EditMode() && allowUpdate_;
}

void cDataGrid::AfterColUpdate() {
  dataChanged_ = true;
}

bool cDataGrid::EditCell(qint64 row, int column, const QString& text) {
  const GridColumn* format = model_->ColumnAt(column);
  if (!BeforeUpdate() || records_ == nullptr || format == nullptr) return false;
  const std::optional<Value> value = GridValue(text, *format);
  if (!value) return false;
  return Guarded("AfterColUpdate",
                 [&] {
                   records_->MoveTo(row);
                   records_->Set(format->field, *value);
                   AfterColUpdate();
                 }) &&
         CommitRow();
}

bool cDataGrid::CommitRow() {
  return Guarded("CommitRow", [this] {
    if (records_ != nullptr && records_->IsWritable()) records_->Update();
  });
}

}  // namespace qbx
