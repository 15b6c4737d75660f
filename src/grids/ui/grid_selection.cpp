// The selection of a grid and copying it.

#include <QClipboard>
#include <QGuiApplication>
#include <QItemSelection>
#include <QItemSelectionModel>
#include <QItemSelectionRange>
#include <QString>

#include "diagnostics/message_catalogue.h"
#include "grids/grid_copy.h"
#include "grids/ui/grid_place.h"
#include "grids/ui/redraw_off.h"

namespace qbx {
namespace {
constexpr int kNothingToSelect = 107;
constexpr int kManyToSelect = 108;
}  // namespace

QItemSelection GridPlace::AllCells() const {
  return {core_.model.index(0, 0), core_.model.index(core_.model.rowCount() - 1, core_.model.columnCount() - 1)};
}

void GridPlace::SelectAll() {
  core_.Guarded("SelectAll", [this] {
    const qint64 count = core_.RowCount();
    if (!core_.view || count == 0) return core_.Say(AppMessage(kNothingToSelect), MessageIcon::kExclamation);
    if (count > kFewRows) {
      const MessageAnswer answer =
          core_.diagnostics.ui.ShowMessage({.text = AppMessage(kManyToSelect, {QString::number(count)}),
                                            .icon = MessageIcon::kQuestion,
                                            .buttons = MessageButtons::kYesNo});
      if (answer != MessageAnswer::kYes || core_.RowCount() == 0) return;
    }
    const RedrawOff redraw(core_.view);
    SetCurrent(0, VisibleColumn(core_.view->currentIndex().column()));
    SetFirstVisibleRow(0);
    core_.view->selectionModel()->select(AllCells(), QItemSelectionModel::ClearAndSelect);
  });
}

void GridPlace::SelectNone() {
  core_.Guarded("SelectNone", [this] {
    if (core_.view) core_.view->selectionModel()->clearSelection();
  });
}

qint64 GridPlace::SelectedCount() const {
  qint64 count = 0;
  if (!core_.view) return count;
  for (const QItemSelectionRange& range : core_.view->selectionModel()->selection())
    count += range.height();
  return count;
}

std::vector<qint64> GridPlace::SelectedRows() const {
  std::vector<qint64> rows;
  for (const QItemSelectionRange& range : core_.view->selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row)
      rows.push_back(row);
  }
  std::sort(rows.begin(), rows.end());
  return rows;
}

QString GridPlace::CopyCellValue() {
  QString text = CurrentRow() < 0 ? QString() : CellText(CurrentRow(), CurrentField());
  if (CurrentRow() >= 0) QGuiApplication::clipboard()->setText(text);
  return text;
}

std::vector<qint64> GridPlace::SelectedIDs() const {
  std::vector<qint64> rows = core_.view ? SelectedRows() : std::vector<qint64>();
  if (rows.empty() && CurrentRow() >= 0) rows = {CurrentRow()};
  const std::vector<int> columns = LineIdColumns();
  if (columns.empty()) return {};
  for (qint64& row : rows)
    row = core_.records->At(row, columns.front()).ToValue().ToInt();
  return rows;
}

void GridPlace::CopyRows() {
  if (!core_.view || core_.records == nullptr) return;
  core_.diagnostics.ui.SetBusy(true);
  core_.Guarded("CopyRows", [&] {
    QGuiApplication::clipboard()->setText(
        CopiedRows(*core_.records, core_.model.Columns(), core_.ShownColumns(), SelectedRows()));
  });
  core_.diagnostics.ui.SetBusy(false);
}

void GridPlace::Copy() {
  if (SelectedCount() > 1)
    CopyRows();
  else
    CopyCellValue();
}

}  // namespace qbx
