// The data grid: keys, the mouse, and the menu.

#include <QtWidgets>

#include "grids/grid_find.h"
#include "grids/grid_sort.h"
#include "grids/ui/cDataGrid.h"
#include "grids/ui/empty_grid_panel.h"
#include "grids/ui/grid_delegate.h"
#include "grids/ui/grid_finder.h"
#include "grids/ui/grid_model.h"

namespace qbx {

void cDataGrid::OnCellClick(std::function<void(const QString& field, qint64 recordId)> callback) {
  onCellClick_ = std::move(callback);
}
void cDataGrid::OnDeleted(std::function<void(qint64 recordId)> callback) {
  onDeleted_ = std::move(callback);
}
void cDataGrid::OnEditButton(std::function<void(const QString& field, qint64 recordId)> callback) {
  onEditButton_ = std::move(callback);
}
void cDataGrid::OnRowColChange(std::function<void()> callback) {
  onRowColChange_ = std::move(callback);
}

bool cDataGrid::KeyPress(const QKeyEvent& event) {
  controlKey_ = 0;  // a Ctrl+Delete whose release went elsewhere must not turn a later Delete into one
  if (ignoreKeyPress_) {
    ignoreKeyPress_ = false;
    return true;
  }
  return Shortcut(event) || FindTyped(event);
}

bool cDataGrid::Shortcut(const QKeyEvent& event) {
  const bool control = (event.modifiers() & Qt::ControlModifier) != 0;
  if (!control) {
    const bool clicks = event.key() == Qt::Key_Space && event.modifiers() == Qt::NoModifier && !finder_->Active();
    if (clicks && !event.isAutoRepeat()) ClickCell(view_->currentIndex(), ClickedBy::kKey);
    return clicks;
  }
  switch (event.key()) {
    case Qt::Key_A:
      if ((event.modifiers() & Qt::ShiftModifier) != 0)
        SelectNone();
      else
        SelectAll();
      return true;
    case Qt::Key_C:
      Copy();
      return true;
    case Qt::Key_F:
      AskFind();
      return true;
    case Qt::Key_Delete:
    case Qt::Key_Insert:
      controlKey_ = event.key();  // done when the key comes up, even if Ctrl is up before it
      return true;
    case Qt::Key_Home:
    case Qt::Key_End:
      MoveTo(event.key() == Qt::Key_Home ? 0 : RowCount() - 1);
      return true;
    default:
      return false;
  }
}

void cDataGrid::KeyUp(const QKeyEvent& event) {
  if (event.isAutoRepeat()) return;
  const bool control = (event.modifiers() & Qt::ControlModifier) != 0 || controlKey_ == event.key();
  if (controlKey_ == event.key()) controlKey_ = 0;
  if (control && event.key() == Qt::Key_Delete) DeleteByUser();
  if (control && event.key() == Qt::Key_Insert && owner_ != nullptr && owner_->EditMode()) InsertRow();
  if (owner_ != nullptr && view_) owner_->Grid_KeyUp(event.key(), event.modifiers(), *view_);
}

bool cDataGrid::FindTyped(const QKeyEvent& event) {
  if ((event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) return false;
  if (event.key() == Qt::Key_Backspace && finder_->Active()) {
    Find(finder_->Shorten());
    return true;
  }
  if (event.key() == Qt::Key_Escape && finder_->Active()) {
    finder_->Stop();
    return true;
  }
  if (event.text().isEmpty() || !event.text().front().isPrint()) return false;
  Find(finder_->Add(event.text()));
  return true;
}

/// Goes to the first row of the sorted column, or of the current one, that starts with what was typed.
void cDataGrid::Find(const QString& start) {
  const int column = SortedColumn() >= 0 ? SortedColumn() : view_->currentIndex().column();
  const GridColumn* format = model_->ColumnAt(column);
  const qint64 row = format == nullptr ? -1 : FindStart(*records_, column, *format, start);
  MoveTo(row);
  finder_->Show(row >= 0);
}

void cDataGrid::AskFind() {
  if (RowCount() == 0) return;
  const int column = SortedColumn() >= 0 ? SortedColumn() : view_->currentIndex().column();
  const GridColumn* format = model_->ColumnAt(column);
  if (format == nullptr) return;
  const QString text = diagnostics_.ui.InputBox(
      {QStringLiteral("%1 begins with:").arg(format->heading), QStringLiteral("Find"), QString()});
  if (text.isEmpty()) return;
  const qint64 row = FindStart(*records_, column, *format, text);
  if (row < 0) Say(QStringLiteral("No %1 begins with \"%2\".").arg(format->heading, text), MessageIcon::kInformation);
  MoveTo(row);
}

void cDataGrid::MouseDown(const QMouseEvent& event) {
  clickModifiers_ = event.modifiers();
  secondClick_ = event.type() == QEvent::MouseButtonDblClick;
  clickedAt_ = event.position().toPoint();
  finder_->Stop();
}

void cDataGrid::MouseUp(const QMouseEvent& event) {
  clickedAt_ = event.position().toPoint();
}

void cDataGrid::MouseMove(const QMouseEvent& event) {
  const QModelIndex index = view_->indexAt(event.position().toPoint());
  const GridColumn* column = model_->ColumnAt(index.column());
  mouseColumn_ = column == nullptr ? QString() : column->field;
  if (model_->IsFlag(index.column()))
    view_->viewport()->setCursor(Qt::PointingHandCursor);
  else
    view_->viewport()->unsetCursor();
}

void cDataGrid::MouseLeave() {
  mouseColumn_.clear();
}

void cDataGrid::ClickCell(const QModelIndex& index, ClickedBy by) {
  const GridColumn* column = model_->ColumnAt(index.column());
  if (column == nullptr || index.row() < 0 || index.row() >= RowCount()) return;
  const QString field = column->field;  // the columns may be others after a callback
  const qint64 recordId = RecordID();
  const bool onButton =
      delegate_->HasEditButton(index.column()) &&
      (by == ClickedBy::kKey || GridDelegate::EditButtonRect(view_->visualRect(index)).contains(clickedAt_));
  if (onButton) {
    if (onEditButton_) onEditButton_(field, recordId);
  } else if (onCellClick_) {
    if (model_->IsFlag(index.column())) clickedFlag_ = index;
    onCellClick_(field, recordId);
    clickedFlag_ = QModelIndex();
  }
}

/// Rows that are read again while the click on a flag is answered were changed by it. Reading many takes a moment, which
/// the user need not wait for to see the tick change.
void cDataGrid::ShowClickedFlag() {
  if (!clickedFlag_.isValid()) return;
  model_->ShowFlipped(clickedFlag_.row(), clickedFlag_.column());
  view_->viewport()->repaint(view_->visualRect(clickedFlag_));
}

/// The flag was flipped, but the rows could not be read: what is shown must not invite to flip it back.
void cDataGrid::KeepClickedFlag() {
  if (!clickedFlag_.isValid()) return;
  const bool was = records_->At(clickedFlag_.row(), clickedFlag_.column()).ToValue().ToBool();
  records_->Put(clickedFlag_.row(), clickedFlag_.column(), Value(!was));
}

void cDataGrid::ColResize() {
  if (finder_) finder_->Stop();
}

void cDataGrid::RowColChange(const QModelIndex& current, const QModelIndex& previous) {
  Guarded("RowColChange", [&] {
    if (!current.isValid() || records_ == nullptr) return;
    model_->Highlight(-1, -1);
    if (current.row() != previous.row()) records_->MoveTo(current.row());
    if (onRowColChange_) onRowColChange_();
  });
}

/// A grid that is entered by the keyboard has a current cell at once.
void cDataGrid::GotFocus() {
  Guarded("GotFocus", [this] {
    if (!view_->currentIndex().isValid()) SetCurrent(0, VisibleColumn(-1));
  });
}

void cDataGrid::Resize() {
  if (!panel_) return;
  panel_->Place();
  ShowPanel();
}

void cDataGrid::Menu(const QPoint& position) {
  // Its entries let events run, so a menu that goes when it closes would go under their feet. It stays until the next one.
  delete menu_;
  menu_ = new QMenu(view_);
  QMenu* const menu = menu_;
  const auto add = [menu](const QString& text, const QKeySequence& keys, bool enabled, std::function<void()> action) {
    QAction* entry = menu->addAction(text);
    entry->setShortcut(keys);
    entry->setShortcutVisibleInContextMenu(true);
    entry->setEnabled(enabled);
    QObject::connect(entry, &QAction::triggered, entry, std::move(action));
  };
  const bool any = RowCount() > 0;
  const int column = view_->currentIndex().column();
  add(QStringLiteral("&Copy"), QKeySequence(Qt::CTRL | Qt::Key_C), any, [this] { Copy(); });
  menu->addSeparator();
  add(QStringLiteral("Select &All"), QKeySequence(Qt::CTRL | Qt::Key_A), any, [this] { SelectAll(); });
  add(QStringLiteral("Select &None"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A), any, [this] { SelectNone(); });
  menu->addSeparator();
  if (allowDelete_) {
    add(QStringLiteral("&Delete row"), QKeySequence(Qt::CTRL | Qt::Key_Delete), any, [this] { DeleteByUser(); });
    menu->addSeparator();
  }
  add(QStringLiteral("&Find..."), QKeySequence(Qt::CTRL | Qt::Key_F), any, [this] { AskFind(); });
  if (const GridColumn* sorted = model_->ColumnAt(column); colSorting_ && sorted != nullptr) {
    QString heading = sorted->heading;
    add(QStringLiteral("&Sort by %1").arg(heading.replace(u'&', QLatin1String("&&"))), {}, any,
        [this, column] { HeadClick(column); });
  }
  menu->popup(view_->viewport()->mapToGlobal(position));
}

}  // namespace qbx
