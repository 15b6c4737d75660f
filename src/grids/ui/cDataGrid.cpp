// The data grid: binding to rows.

#include "grids/ui/cDataGrid.h"

#include <QScrollBar>
#include <QSet>
#include <QTableView>
#include <stdexcept>

#include "grids/grid_filter.h"
#include "grids/grid_sort.h"
#include "grids/ui/redraw_off.h"

namespace qbx {

cDataGrid::cDataGrid(Statements& statements, Diagnostics diagnostics, const UserOptions& options)
    : core_(statements, diagnostics, options),
      look_(core_),
      place_(core_),
      rows_(core_, place_, look_, [this] { Requery(); }),
      keys_({core_, place_, rows_, look_, [this](const QString& sort) { sSortString(sort); }}) {
  connect(&keys_, &GridKeys::CellClicked, this, &cDataGrid::CellClicked);
  connect(&keys_, &GridKeys::EditButtonClicked, this, &cDataGrid::EditButtonClicked);
  connect(&keys_, &GridKeys::FindWanted, this, &cDataGrid::FindWanted);
  connect(&keys_, &GridKeys::RowColChanged, this, &cDataGrid::RowColChanged);
  connect(&rows_, &GridRows::Deleted, this, &cDataGrid::Deleted);
}

cDataGrid::~cDataGrid() {
  if (!core_.view) return;
  core_.view->setModel(nullptr);
  core_.view->setItemDelegate(nullptr);
}

QTableView* cDataGrid::Grid() const {
  return core_.view;
}

void cDataGrid::Grid(QTableView& grid) {
  core_.view = &grid;
  events_ = std::make_unique<GridEvents>(keys_, look_, grid);
  grid.setModel(&core_.model);
  keys_.Attach();
  look_.Attach(*events_);
}

void cDataGrid::sSortString(const QString& sort) {
  core_.Guarded("sSortString", [this, &sort] {
    const GridSort parsed = ParseSort(sort);
    if (core_.records != nullptr && !parsed.column.isEmpty() && core_.model.ColumnOf(parsed.column) < 0)
      core_.sortString.clear();
    else
      core_.sortString = SortText(parsed);
    if (core_.records == nullptr) return;
    const RedrawOff redraw(core_.view);
    const int column = core_.view->currentIndex().column();
    ApplySort();
    core_.model.RowsChanged();
    place_.SetCurrent(0, place_.VisibleColumn(column));
    place_.SetFirstVisibleRow(0);
    look_.ShowSortMark();
  });
}

void cDataGrid::sFilter(const QString& filter) {
  core_.Guarded("sFilter", [this, &filter] {
    filter_ = filter;
    if (core_.records == nullptr) return;
    const RedrawOff redraw(core_.view);
    ApplyFilter();
    ShowRows(false);
  });
}

void cDataGrid::ShowOnly(std::function<bool(const StoredRow& row)> test) {
  core_.Guarded("ShowOnly", [this, &test] {
    shownOnly_ = std::move(test);
    if (core_.records == nullptr || !core_.view) return;
    const RedrawOff redraw(core_.view);
    keys_.StopFinding();
    const std::vector<Value> current = place_.KeyOf(place_.CurrentRow());
    const int column = core_.view->currentIndex().column();
    ApplyFilter();
    core_.model.RowsChanged();
    const qint64 row = current.empty() ? 0 : place_.RowOfKey(current, 0);
    place_.SetCurrent(std::max<qint64>(row, 0), place_.VisibleColumn(column));
    place_.SetFirstVisibleRow(0);
    if (row > 0) place_.MoveTo(row);
    look_.ShowPanel();
  });
}

void cDataGrid::DataSource(Recordset* records) {
  if (records != nullptr)
    ConnectRecordset(*records);
  else
    DisconnectRecordset();
}

void cDataGrid::ConnectRecordset(Recordset& records) {
  core_.Guarded("ConnectRecordset", [this, &records] {
    if (!core_.view) return;
    if (records.RecordCount() < 0) throw std::invalid_argument("A grid needs rows that can be counted and sorted.");
    const RedrawOff redraw(core_.view);
    keys_.StopFinding();
    core_.records = records.IsOpen() ? &records : nullptr;
    shownOnly_ = {};
    QStringList fields;
    for (const Column& column : records.Columns())
      fields += column.name;
    const bool newColumns = fields != shownFields_;
    shownFields_ = fields;
    if (core_.records != nullptr) {
      ApplyFilter();
      ApplySort();
    }
    ShowRows(newColumns);
    look_.FitColumns();
  });
}

/// Shows the present rows of the recordset and makes the first one current.
void cDataGrid::ShowRows(bool newColumns) {
  core_.model.Bind(core_.records);
  if (newColumns) look_.LayOutColumns();
  look_.ApplyHidden();
  look_.ShowSortMark();
  place_.SetCurrent(0, place_.VisibleColumn(-1));
  place_.SetFirstVisibleRow(0);
  if (newColumns) core_.view->horizontalScrollBar()->setValue(0);
  look_.ShowPanel();
}

void cDataGrid::DisconnectRecordset() {
  core_.Guarded("DisconnectRecordset", [this] {
    if (!core_.view) return;
    keys_.StopFinding();
    look_.SaveLayout();  // the heading loses the layout together with the columns
    core_.records = nullptr;
    shownFields_.clear();
    core_.model.Bind(nullptr);
    look_.ShowPanel();
  });
}

void cDataGrid::RebindData() {
  core_.Guarded("RebindData", [this] {
    if (core_.records == nullptr && !rows_.StoredProc().isEmpty()) {
      Recordset rows;
      if (core_.statements.dbOpenRec(
              rows, QStringLiteral("proc_selp_%1 ( %2 )").arg(rows_.StoredProc()).arg(rows_.HeaderID())))
        return;
      ownRecords_ = std::move(rows);
      ConnectRecordset(ownRecords_);
    } else if (core_.records != nullptr) {
      ConnectRecordset(*core_.records);
    }
  });
}

void cDataGrid::Clear() {
  core_.Guarded("Clear", [this] {
    DisconnectRecordset();
    ownRecords_.Close();
    core_.sortString.clear();
    shownFields_.clear();
  });
}

void cDataGrid::Requery(const std::function<void()>& reread) {
  if (core_.records == nullptr || !core_.view) return;
  keys_.ShowClickedFlag();
  const GridPlace::Kept place = place_.Remember();
  bool read = false;
  {
    const RedrawOff redraw(core_.view);
    try {
      if (reread)
        reread();
      else
        core_.records->Requery();
      read = true;
    } catch (const std::exception& error) {
      core_.diagnostics.log.WriteLog(QLatin1String("Requery: ") + QString::fromUtf8(error.what()));
      keys_.KeepClickedFlag();
    }
    core_.model.RowsChanged();
    if (!look_.FittedToRows()) look_.FitColumns();
    place_.Restore(place);
    look_.ShowPanel();
  }
  if (!read) core_.Say(QStringLiteral("Unexpected error when reloading the grid."), MessageIcon::kExclamation);
}

void cDataGrid::ApplyFilter() {
  std::optional<GridFilter> filter;
  if (!filter_.isEmpty()) filter = ParseGridFilter(filter_, *core_.records);
  core_.model.SetFilteredColumns(filter ? QSet<int>(filter->columns.begin(), filter->columns.end()) : QSet<int>());
  const auto inWords = filter ? std::move(filter->test) : std::function<bool(const StoredRow&)>();
  if (inWords && shownOnly_)
    core_.records->Filter([inWords, test = shownOnly_](const StoredRow& row) { return inWords(row) && test(row); });
  else
    core_.records->Filter(inWords ? inWords : shownOnly_);
}

void cDataGrid::ApplySort() {
  const GridSort sort = ParseSort(core_.sortString);
  core_.records->Sort(sort.column.isEmpty() ? -1 : core_.records->ColumnIndex(sort.column), sort.descending);
}

std::vector<GridShownColumn> cDataGrid::ShownColumns() const {
  std::vector<GridShownColumn> shown;
  for (const int column : core_.ShownColumns()) {
    shown.push_back({.column = column,
                     .heading = core_.model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString(),
                     .width = core_.view->columnWidth(column)});
  }
  return shown;
}

}  // namespace qbx
