// The data grid: its properties, and how it is bound to rows.

#include "grids/ui/cDataGrid.h"

#include <QtWidgets>
#include <stdexcept>

#include "grids/grid_filter.h"
#include "grids/grid_find.h"
#include "grids/grid_sort.h"
#include "grids/ui/empty_grid_panel.h"
#include "grids/ui/grid_delegate.h"
#include "grids/ui/grid_events.h"
#include "grids/ui/grid_finder.h"
#include "grids/ui/grid_model.h"
#include "grids/ui/grid_place.h"
#include "grids/ui/grid_position.h"
#include "grids/ui/redraw_off.h"
#include "util/tagged_string.h"

namespace qbx {

cDataGrid::cDataGrid(Statements& statements, Diagnostics diagnostics, const UserOptions& options)
    : statements_(statements),
      diagnostics_(diagnostics),
      options_(options),
      model_(std::make_unique<GridModel>()),
      delegate_(std::make_unique<GridDelegate>(*model_)) {
  model_->SetEditor([this](qint64 row, int column, const QString& text) { return EditCell(row, column, text); },
                    [this] { return BeforeUpdate(); });
}

cDataGrid::~cDataGrid() {
  if (!view_) return;
  view_->setModel(nullptr);
  view_->setItemDelegate(nullptr);
}

QTableView* cDataGrid::Grid() const {
  return view_;
}

void cDataGrid::Grid(QTableView& grid) {
  view_ = &grid;
  events_ = std::make_unique<GridEvents>(*this, grid);
  PrepareView();
  finder_ = std::make_unique<GridFinder>(grid);
  panel_ = std::make_unique<EmptyGridPanel>(grid);
  ApplyStyles();
}

void cDataGrid::PrepareView() {
  view_->setItemDelegate(delegate_.get());
  view_->setModel(model_.get());
  view_->setSelectionBehavior(QAbstractItemView::SelectRows);
  view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  view_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  view_->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
  view_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
  view_->setTabKeyNavigation(false);
  view_->setWordWrap(false);
  view_->setCornerButtonEnabled(false);
  view_->setContextMenuPolicy(Qt::CustomContextMenu);
  view_->verticalHeader()->hide();
  view_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  view_->verticalHeader()->setMinimumSectionSize(1);
  QHeaderView* header = view_->horizontalHeader();
  header->setSectionsMovable(true);
  header->setHighlightSections(false);
  header->setTextElideMode(Qt::ElideRight);
  bColSorting(colSorting_);
  bColResizing(colResizing_);
  QObject::connect(header, &QHeaderView::sectionClicked, events_.get(), [this](int column) { HeadClick(column); });
  QObject::connect(header, &QHeaderView::sectionResized, events_.get(), [this](int column, int before, int now) {
    ColResize();
    if (before > 0 && now > 0) ColumnChanged(column);  // else it was hidden, or shown again
  });
  QObject::connect(header, &QHeaderView::sectionMoved, events_.get(), [this](int column) { ColumnChanged(column); });
  QObject::connect(view_, &QTableView::clicked, events_.get(), [this](const QModelIndex& index) {
    if (clickModifiers_ == Qt::NoModifier && !secondClick_) ClickCell(index, ClickedBy::kMouse);
  });
  QObject::connect(view_, &QWidget::customContextMenuRequested, events_.get(), [this](const QPoint& at) { Menu(at); });
  QObject::connect(
      view_->selectionModel(), &QItemSelectionModel::currentChanged, events_.get(),
      [this](const QModelIndex& current, const QModelIndex& previous) { RowColChange(current, previous); });
}

void cDataGrid::sSortString(const QString& sort) {
  Guarded("sSortString", [this, &sort] {
    const GridSort parsed = ParseSort(sort);
    if (records_ != nullptr && !parsed.column.isEmpty() && model_->ColumnOf(parsed.column) < 0)
      sortString_.clear();
    else
      sortString_ = SortText(parsed);
    if (records_ == nullptr) return;
    const RedrawOff redraw(view_);
    const int column = view_->currentIndex().column();
    ApplySort();
    model_->RowsChanged();
    SetCurrent(0, VisibleColumn(column));
    SetFirstVisibleRow(0);
    ShowSortMark();
  });
}

void cDataGrid::bWrapped(bool wrapped) {
  wrapped_ = wrapped;
  delegate_->SetWrap(wrapped_, wordWrap_, wrapColumn_);
  ApplyRowHeight();
}

void cDataGrid::bWordWrap(bool wrap) {
  wordWrap_ = wrap;
  bWrapped(wrapped_);
}

void cDataGrid::sWrapColumn(const QString& field) {
  wrapColumn_ = field;
  bWrapped(wrapped_);
}

void cDataGrid::bColSorting(bool on) {
  colSorting_ = on;
  if (view_) view_->horizontalHeader()->setSectionsClickable(on);
}

void cDataGrid::bColResizing(bool on) {
  colResizing_ = on;
  if (view_) view_->horizontalHeader()->setSectionResizeMode(on ? QHeaderView::Interactive : QHeaderView::Fixed);
}

void cDataGrid::lCustomBackColor(int colour) {
  customBackColor_ = colour;
  ApplyStyles();
}

void cDataGrid::bHideNoRecords(bool hide) {
  hideNoRecords_ = hide;
  ShowPanel();
}

void cDataGrid::Tag(const QString& tagged) {
  tag_ = tagged;
  ShowPanel();
}

bool cDataGrid::EditMode() const {
  return editMode_ || (owner_ != nullptr && owner_->EditMode());
}

void cDataGrid::sFilter(const QString& filter) {
  Guarded("sFilter", [this, &filter] {
    filter_ = filter;
    if (records_ == nullptr) return;
    const RedrawOff redraw(view_);
    ApplyFilter();
    ShowRows(false);
  });
}

void cDataGrid::DataSource(Recordset* records) {
  if (records != nullptr)
    ConnectRecordset(*records);
  else
    DisconnectRecordset();
}

void cDataGrid::ConnectRecordset(Recordset& records) {
  Guarded("ConnectRecordset", [this, &records] {
    if (!view_) return;
    if (records.RecordCount() < 0) throw std::invalid_argument("A grid needs rows that can be counted and sorted.");
    const RedrawOff redraw(view_);
    finder_->Stop();
    records_ = records.IsOpen() ? &records : nullptr;
    QStringList fields;
    for (const Column& column : records.Columns())
      fields += column.name;
    const bool newColumns = fields != shownFields_;
    shownFields_ = fields;
    if (records_ != nullptr) {
      ApplyFilter();
      ApplySort();
    }
    ShowRows(newColumns);
    FitColumns();
  });
}

/// Shows what the recordset holds now, its first row current.
void cDataGrid::ShowRows(bool newColumns) {
  model_->Bind(records_);
  if (newColumns) {
    ApplyStyles();  // the user's options may have been read since
    const QScopedValueRollback<bool> layingOut(layingOut_, true);
    QHeaderView& header = *view_->horizontalHeader();
    for (int i = 0; i < header.count(); ++i)
      header.moveSection(header.visualIndex(i), i);
    changedByUser_.clear();
    if (registry_ != nullptr) rowHeight_ = InitGridPosition(*registry_, layoutWindow_, *view_, changedByUser_);
    ApplyRowHeight();
  }
  ApplyHidden();
  ShowSortMark();
  SetCurrent(0, VisibleColumn(-1));
  SetFirstVisibleRow(0);
  if (newColumns) view_->horizontalScrollBar()->setValue(0);
  ShowPanel();
}

void cDataGrid::DisconnectRecordset() {
  Guarded("DisconnectRecordset", [this] {
    if (!view_) return;
    finder_->Stop();
    SaveLayout();  // the heading forgets it with the columns
    records_ = nullptr;
    shownFields_.clear();
    model_->Bind(nullptr);
    ShowPanel();
  });
}

void cDataGrid::RebindData() {
  Guarded("RebindData", [this] {
    if (records_ == nullptr && !storedProc_.isEmpty()) {
      const qint64 header = owner_ != nullptr && owner_->HeaderID() != 0 ? owner_->HeaderID() : headerId_;
      Recordset rows;
      if (statements_.dbOpenRec(rows, QStringLiteral("proc_selp_%1 ( %2 )").arg(storedProc_).arg(header))) return;
      ownRecords_ = std::move(rows);
      ConnectRecordset(ownRecords_);
    } else if (records_ != nullptr) {
      ConnectRecordset(*records_);
    }
  });
}

void cDataGrid::Clear() {
  Guarded("Clear", [this] {
    DisconnectRecordset();
    ownRecords_.Close();
    sortString_.clear();
    shownFields_.clear();
  });
}

void cDataGrid::Requery(const std::function<void()>& reread) {
  if (records_ == nullptr || !view_) return;
  ShowClickedFlag();
  const Place place = Remember();
  bool read = false;
  {
    const RedrawOff redraw(view_);
    try {
      if (reread)
        reread();
      else
        records_->Requery();
      read = true;
    } catch (const std::exception& error) {
      diagnostics_.log.WriteLog(QLatin1String("Requery: ") + QString::fromUtf8(error.what()));
      KeepClickedFlag();
    }
    model_->RowsChanged();
    if (!fittedToRows_) FitColumns();
    Restore(place);
    ShowPanel();
  }
  if (!read) Say(QStringLiteral("Unexpected error when reloading the grid."), MessageIcon::kExclamation);
}

bool cDataGrid::Guarded(const char* routine, const std::function<void()>& work) {
  try {
    work();
    return true;
  } catch (const std::exception& error) {
    diagnostics_.errors.ShowError(0, QLatin1String(routine), QString::fromUtf8(error.what()));
    return false;
  }
}

void cDataGrid::Say(const QString& text, MessageIcon icon) {
  diagnostics_.ui.ShowMessage({.text = text, .icon = icon, .defaultAnswer = MessageAnswer::kOk});
}

void cDataGrid::ApplyFilter() {
  std::optional<GridFilter> filter;
  if (!filter_.isEmpty()) filter = ParseGridFilter(filter_, *records_);
  model_->SetFilteredColumns(filter ? QSet<int>(filter->columns.begin(), filter->columns.end()) : QSet<int>());
  records_->Filter(filter ? std::move(filter->test) : std::function<bool(const StoredRow&)>());
}

void cDataGrid::ApplySort() {
  const GridSort sort = ParseSort(sortString_);
  records_->Sort(sort.column.isEmpty() ? -1 : records_->ColumnIndex(sort.column), sort.descending);
}

void cDataGrid::ShowPanel() {
  if (!view_) return;
  if (records_ == nullptr || hideNoRecords_ || RowCount() > 0) return panel_->Hide();
  const QString message = strGetTag(tag_, QStringLiteral("MSG"));
  const QColor background = customBackColor_ >= 0 ? ColourOf(customBackColor_) : model_->Styles().odd.background;
  panel_->Show(message.isEmpty() ? QStringLiteral("No records to display") : message, background,
               ReadableOn(background));
}

}  // namespace qbx
