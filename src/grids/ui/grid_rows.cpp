#include "grids/ui/grid_rows.h"

#include "diagnostics/message_catalogue.h"
#include "grids/grid_statements.h"
#include "grids/ui/redraw_off.h"

namespace qbx {
namespace {
constexpr int kMultipleRows = 103;
}  // namespace

GridRows::GridRows(GridCore& core, GridPlace& place, GridLook& look, std::function<void()> requery)
    : core_(core), place_(place), look_(look), requery_(std::move(requery)) {
  core_.model.SetEditor([this](qint64 row, int column, const QString& text) { return EditCell(row, column, text); },
                        [this] { return BeforeUpdate(); });
}

qint64 GridRows::HeaderID() const {
  return core_.owner != nullptr && core_.owner->HeaderID() != 0 ? core_.owner->HeaderID() : headerId_;
}

bool GridRows::BeforeDelete() {
  if (place_.SelectedCount() > 1) {
    core_.Say(AppMessage(kMultipleRows), MessageIcon::kExclamation);
    return false;
  }
  deleteKey_ = place_.KeyOf(place_.CurrentRow());
  return true;
}

bool GridRows::AfterDelete() {
  if (storedProc_.isEmpty() || deleteKey_.empty()) return true;
  Connection* transaction = core_.owner == nullptr ? nullptr : core_.owner->ADOConnTrans();
  const auto result = core_.statements.dbExecute(DeleteRowStatement(storedProc_, deleteKey_), false, transaction);
  dataChanged_ = dataChanged_ || result.Ok();
  return result.Ok();
}

/// Deletes a row in the database before the grid hides it, so that an existing row is never hidden. Does nothing for a
/// grid that is not editable.
bool GridRows::DeleteInDatabase(qint64 row) {
  if (!EditMode()) return true;
  deleteKey_ = place_.KeyOf(row);
  if (core_.owner == nullptr || deleteKey_.empty()) return AfterDelete();
  return core_.owner->DeleteRow(deleteKey_.front().ToInt(), [this] { return AfterDelete(); });
}

/// Removes rows from the recordset in one pass.
/// \param rows  in ascending order
void GridRows::DropRows(const std::vector<qint64>& rows) {
  auto next = rows.begin();
  core_.records->MoveFirst();
  for (qint64 row = 0; next != rows.end() && !core_.records->Eof(); ++row) {
    if (row == *next) {
      core_.records->Drop();
      ++next;
    } else {
      core_.records->MoveNext();
    }
  }
}

/// What Ctrl+Delete does. An editable grid deletes one row at a time; any other only hides the rows.
void GridRows::DeleteSelected() {
  std::vector<qint64> rows = place_.SelectedRows();
  if (rows.empty() && place_.CurrentRow() >= 0) rows = {place_.CurrentRow()};
  if (rows.empty() || core_.records == nullptr) return;
  if (EditMode() && (!BeforeDelete() || (core_.owner != nullptr && !core_.owner->MayDeleteRows()))) return;
  if (rows.size() == 1 && place_.CurrentRow() != rows.front())
    place_.SetCurrent(rows.front(), core_.view->currentIndex().column());
  const qint64 recordId = place_.RecordID();
  bool deleted = false;
  const bool done = core_.Guarded("AfterDelete", [&] {
    const RedrawOff redraw(core_.view);
    deleted = DeleteInDatabase(rows.front());
    if (!deleted) return;
    const GridPlace::Kept place = place_.Remember();
    DropRows(rows);
    core_.model.RowsChanged();
    place_.Restore(place);
    look_.ShowPanel();
  });
  if (!done) return;
  if (!deleted) {
    core_.Say(QStringLiteral("Error deleting currently selected row. It may have already been deleted."),
              MessageIcon::kInformation);
  } else if (EditMode()) {
    Q_EMIT Deleted(recordId);
  }
}

void GridRows::DeleteByUser() {
  if (!allowDelete_) return;
  if (allowUpdate_)
    DeleteSelected();
  else
    core_.Say(QStringLiteral("Rows cannot be deleted from this grid."), MessageIcon::kExclamation);
}

void GridRows::Remove() {
  if (!core_.view || place_.CurrentRow() < 0) return;
  place_.SetCurrent(place_.CurrentRow(), core_.view->currentIndex().column());
  DeleteSelected();
}

void GridRows::RemoveRows() {
  core_.Guarded("RemoveRows", [this] {
    if (!core_.view || core_.records == nullptr) return;
    if (EditMode() && core_.owner != nullptr && !core_.owner->MayDeleteRows()) return;
    std::vector<qint64> removed;
    {
      const RedrawOff redraw(core_.view);
      std::vector<qint64> rows;
      for (qint64 row = 0; row < core_.RowCount() && DeleteInDatabase(row); ++row) {
        rows.push_back(row);
        if (const std::vector<Value> key = place_.KeyOf(row); !key.empty()) removed.push_back(key.front().ToInt());
      }
      DropRows(rows);
      core_.model.RowsChanged();
      place_.SetCurrent(0, place_.VisibleColumn(-1));
      look_.ShowPanel();
    }
    if (!EditMode()) return;
    for (const qint64 recordId : removed)
      Q_EMIT Deleted(recordId);
  });
}

void GridRows::InsertRow() {
  if (!BeforeInsert())
    return core_.Say(QStringLiteral("Row Inserting is not available on this grid."), MessageIcon::kExclamation);
  const QString extra = core_.owner == nullptr ? QString() : core_.owner->sInsertRowExtraParams();
  const QString sql = InsertRowStatement(storedProc_, HeaderID(), place_.RecordID(), extra);
  if (!core_.statements.dbExecute(sql, false, core_.owner == nullptr ? nullptr : core_.owner->ADOConnTrans()).Ok()) {
    return core_.Say(QStringLiteral("Error while attempting to insert a row above the current row."),
                     MessageIcon::kExclamation);
  }
  dataChanged_ = true;
  requery_();
}

bool GridRows::EditCell(qint64 row, int column, const QString& text) {
  const GridColumn* format = core_.model.ColumnAt(column);
  if (!BeforeUpdate() || core_.records == nullptr || format == nullptr) return false;
  const std::optional<Value> value = GridValue(text, *format);
  if (!value) return false;
  return core_.Guarded("AfterColUpdate", [&] {
    core_.records->MoveTo(row);
    core_.records->Set(format->field, *value);
    AfterColUpdate();
  }) && CommitRow();
}

bool GridRows::CommitRow() {
  return core_.Guarded("CommitRow", [this] {
    if (core_.records != nullptr && core_.records->IsWritable()) core_.records->Update();
  });
}

bool GridRows::EditMode() const {
  return editMode_ || (core_.owner != nullptr && core_.owner->EditMode());
}

}  // namespace qbx
