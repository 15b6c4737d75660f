#include "grids/ui/grid_keys.h"

#include <QAbstractItemView>
#include <QAction>
#include <QEvent>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMenu>
#include <QModelIndex>
#include <QMouseEvent>
#include <QTableView>
#include <QWidget>

#include "grids/grid_find.h"
#include "grids/grid_sort.h"
#include "grids/ui/column_menu.h"

namespace qbx {

GridKeys::GridKeys(Parts parts)
    : core_(parts.core), place_(parts.place), rows_(parts.rows), look_(parts.look), sortBy_(std::move(parts.sortBy)) {}

GridKeys::~GridKeys() = default;

void GridKeys::Attach() {
  QTableView& view = *core_.view;
  QHeaderView* header = view.horizontalHeader();
  view.setSelectionBehavior(QAbstractItemView::SelectRows);
  view.setSelectionMode(QAbstractItemView::ExtendedSelection);
  view.setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
  view.setTabKeyNavigation(false);
  view.setContextMenuPolicy(Qt::CustomContextMenu);
  bColSorting(colSorting_);
  finder_ = std::make_unique<GridFinder>(view);
  connect(header, &QHeaderView::sectionClicked, this, [this](int column) { HeadClick(column); });
  connect(header, &QHeaderView::sectionResized, this, [this] { StopFinding(); });
  connect(&view, &QTableView::clicked, this, [this](const QModelIndex& index) {
    if (clickModifiers_ == Qt::NoModifier && !secondClick_) ClickCell(index, ClickedBy::kMouse);
  });
  header->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(header, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) { ColumnsMenu(at); });
  connect(&view, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) { Menu(at); });
  connect(view.selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this](const QModelIndex& current, const QModelIndex& previous) { RowColChange(current, previous); });
}

void GridKeys::bColSorting(bool on) {
  colSorting_ = on;
  if (core_.view) core_.view->horizontalHeader()->setSectionsClickable(on);
}

void GridKeys::StopFinding() {
  if (finder_) finder_->Stop();
}

bool GridKeys::KeyPress(const QKeyEvent& event) {
  // The release of an earlier Ctrl+Delete may have gone elsewhere; a later Delete must not count as one.
  controlKey_ = 0;
  if (ignoreKeyPress_) {
    ignoreKeyPress_ = false;
    return true;
  }
  return Shortcut(event) || FindTyped(event);
}

bool GridKeys::Shortcut(const QKeyEvent& event) {
  const bool control = (event.modifiers() & Qt::ControlModifier) != 0;
  if (!control) {
    const bool clicks = event.key() == Qt::Key_Space && event.modifiers() == Qt::NoModifier && !finder_->Active();
    if (clicks && !event.isAutoRepeat()) ClickCell(core_.view->currentIndex(), ClickedBy::kKey);
    return clicks;
  }
  switch (event.key()) {
    case Qt::Key_A:
      if ((event.modifiers() & Qt::ShiftModifier) != 0)
        place_.SelectNone();
      else
        place_.SelectAll();
      return true;
    case Qt::Key_C:
      place_.Copy();
      return true;
    case Qt::Key_F:
      if (finding_) Q_EMIT FindWanted();
      return true;
    case Qt::Key_Delete:
    case Qt::Key_Insert:
      controlKey_ = event.key();  // acts when the key is released, even if Ctrl is released before it
      return true;
    case Qt::Key_Home:
    case Qt::Key_End:
      place_.MoveTo(event.key() == Qt::Key_Home ? 0 : core_.RowCount() - 1);
      return true;
    default:
      return false;
  }
}

void GridKeys::KeyUp(const QKeyEvent& event) {
  if (event.isAutoRepeat()) return;
  const bool control = (event.modifiers() & Qt::ControlModifier) != 0 || controlKey_ == event.key();
  if (controlKey_ == event.key()) controlKey_ = 0;
  if (control && event.key() == Qt::Key_Delete) rows_.DeleteByUser();
  if (control && event.key() == Qt::Key_Insert && core_.owner != nullptr && core_.owner->EditMode()) rows_.InsertRow();
  if (core_.owner != nullptr && core_.view) core_.owner->Grid_KeyUp(event.key(), event.modifiers(), *core_.view);
}

bool GridKeys::FindTyped(const QKeyEvent& event) {
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

/// Goes to the first row whose text in the sorted column, or else in the current one, begins with what was typed.
void GridKeys::Find(const QString& start) {
  const int column = core_.SortedColumn() >= 0 ? core_.SortedColumn() : core_.view->currentIndex().column();
  const GridColumn* format = core_.model.ColumnAt(column);
  const qint64 row = format == nullptr ? -1 : FindStart(*core_.records, column, *format, start);
  place_.MoveTo(row);
  finder_->Show(row >= 0);
}

void GridKeys::MouseDown(const QMouseEvent& event) {
  clickModifiers_ = event.modifiers();
  secondClick_ = event.type() == QEvent::MouseButtonDblClick;
  clickedAt_ = event.position().toPoint();
  finder_->Stop();
}

void GridKeys::MouseUp(const QMouseEvent& event) {
  clickedAt_ = event.position().toPoint();
}

void GridKeys::MouseMove(const QMouseEvent& event) {
  const QModelIndex index = core_.view->indexAt(event.position().toPoint());
  const GridColumn* column = core_.model.ColumnAt(index.column());
  mouseColumn_ = column == nullptr ? QString() : column->field;
  if (core_.model.IsFlag(index.column()))
    core_.view->viewport()->setCursor(Qt::PointingHandCursor);
  else
    core_.view->viewport()->unsetCursor();
}

void GridKeys::ClickCell(const QModelIndex& index, ClickedBy by) {
  const GridColumn* column = core_.model.ColumnAt(index.column());
  if (column == nullptr || index.row() < 0 || index.row() >= core_.RowCount()) return;
  const QString field = column->field;  // a callback may change the columns
  const qint64 recordId = place_.RecordID();
  const bool onButton =
      look_.HasEditButton(index.column()) &&
      (by == ClickedBy::kKey || GridDelegate::EditButtonRect(core_.view->visualRect(index)).contains(clickedAt_));
  if (onButton) {
    Q_EMIT EditButtonClicked(field, recordId);
  } else {
    if (core_.model.IsFlag(index.column())) clickedFlag_ = index;
    Q_EMIT CellClicked(field, recordId);
    clickedFlag_ = QModelIndex();
  }
}

void GridKeys::ShowClickedFlag() {
  if (!clickedFlag_.isValid()) return;
  core_.model.ShowFlipped(clickedFlag_.row(), clickedFlag_.column());
  core_.view->viewport()->repaint(core_.view->visualRect(clickedFlag_));
}

void GridKeys::KeepClickedFlag() {
  if (!clickedFlag_.isValid()) return;
  const bool was = core_.records->At(clickedFlag_.row(), clickedFlag_.column()).ToValue().ToBool();
  core_.records->Put(clickedFlag_.row(), clickedFlag_.column(), Value(!was));
}

void GridKeys::RowColChange(const QModelIndex& current, const QModelIndex& previous) {
  core_.Guarded("RowColChange", [&] {
    if (!current.isValid() || core_.records == nullptr) return;
    core_.model.Highlight(-1, -1);
    if (current.row() != previous.row()) core_.records->MoveTo(current.row());
    Q_EMIT RowColChanged();
  });
}

void GridKeys::GotFocus() {
  core_.Guarded("GotFocus", [this] {
    if (!core_.view->currentIndex().isValid()) place_.SetCurrent(0, place_.VisibleColumn(-1));
  });
}

void GridKeys::Menu(const QPoint& position) {
  // A menu's actions let events run, so it must not be deleted when it closes. It is deleted before the next one opens.
  delete menu_;
  menu_ = new QMenu(core_.view);
  menu_->setObjectName(QStringLiteral("mnuGrid"));
  menu_->setToolTipsVisible(true);
  QMenu* const menu = menu_;
  const auto add = [menu](const QString& text, const QKeySequence& keys, bool enabled, std::function<void()> action) {
    QAction* entry = menu->addAction(text);
    entry->setShortcut(keys);
    entry->setShortcutVisibleInContextMenu(true);
    entry->setEnabled(enabled);
    connect(entry, &QAction::triggered, entry, std::move(action));
  };
  if (core_.owner != nullptr) core_.owner->Grid_MenuOpens();
  menu->addActions(core_.view->actions());
  menu->addSeparator();
  const bool any = core_.RowCount() > 0;
  const int column = core_.view->currentIndex().column();
  add(QStringLiteral("&Copy"), QKeySequence(Qt::CTRL | Qt::Key_C), any, [this] { place_.Copy(); });
  menu->addSeparator();
  add(QStringLiteral("Select &All"), QKeySequence(Qt::CTRL | Qt::Key_A), any, [this] { place_.SelectAll(); });
  add(QStringLiteral("Select &None"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A), any,
      [this] { place_.SelectNone(); });
  menu->addSeparator();
  if (rows_.AllowDelete()) {
    add(QStringLiteral("&Delete row"), QKeySequence(Qt::CTRL | Qt::Key_Delete), any, [this] { rows_.DeleteByUser(); });
    menu->addSeparator();
  }
  if (finding_)
    add(QStringLiteral("&Find..."), QKeySequence(Qt::CTRL | Qt::Key_F), any, [this] { Q_EMIT FindWanted(); });
  if (const GridColumn* sorted = core_.model.ColumnAt(column); colSorting_ && sorted != nullptr) {
    QString heading = sorted->heading;
    add(QStringLiteral("&Sort by %1").arg(heading.replace(u'&', QLatin1String("&&"))), {}, any,
        [this, column] { HeadClick(column); });
  }
  add(QStringLiteral("Colu&mns..."), {}, core_.model.columnCount() > 0, [this] { ColumnsMenu({}); });
  menu->popup(core_.view->viewport()->mapToGlobal(position));
}

/// \param position  in the heading
void GridKeys::ColumnsMenu(const QPoint& position) {
  if (core_.model.columnCount() == 0) return;
  auto* menu = new ColumnMenu(look_, place_, *core_.view);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->popup(core_.view->horizontalHeader()->mapToGlobal(position));
}

void GridKeys::HeadClick(int column) {
  const GridColumn* clicked = core_.model.ColumnAt(column);
  if (!colSorting_ || clicked == nullptr) return;
  if (core_.RowCount() > 0)
    sortBy_(SortText(SortAfterClick(ParseSort(core_.sortString), clicked->field)));
  else
    look_.ShowSortMark();  // the heading has changed its mark by itself
}

}  // namespace qbx
