// The data grid: a wrapper around a table view that shows a recordset.

#pragma once

#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTableView>
#include <functional>
#include <memory>

#include "grids/ui/grid_core.h"
#include "grids/ui/grid_events.h"
#include "grids/ui/grid_keys.h"
#include "grids/ui/grid_look.h"
#include "grids/ui/grid_place.h"
#include "grids/ui/grid_rows.h"

namespace qbx {

/// A shown column of the grid.
struct GridShownColumn {
  int column = 0;  ///< position in the recordset
  QString heading;
  int width = 0;  ///< logical pixels
};

/// Shows a recordset in a table view and does everything with it that a user can do in a list: sort, select, find,
/// copy, insert and delete rows.
///
///   cDataGrid grid(statements, diagnostics, userOptions);
///   grid.Grid(*ui.dbgData);
///   grid.ParentForm(*this);
///   grid.StoredProc(QStringLiteral("Campaign_Results"));
///   grid.SetLineID(QStringLiteral("RecordID"));
///   grid.FlagColumns({QStringLiteral("Send_SMS")});
///   connect(&grid, &cDataGrid::CellClicked, this, [this](const QString& field, qint64 recordId) { ... });
///   grid.ConnectRecordset(rows);
///
/// The rows are read from the recordset whenever a cell is drawn and are never copied: the recordset must outlive the
/// connection, and whoever reads other rows into it calls `ConnectRecordset` or `RebindData` before events run again. A
/// property is read by its name and set by its name with a value. No call throws: failures are reported under the
/// routine's name, and the grid stays as it was.
///
/// Keys: arrows, Page Up/Down, Home/End (with Ctrl: first/last row); letters find in the sorted column (in the current
/// one while unsorted), Backspace shortens; Space is a click on the current cell; Ctrl+C copies, Ctrl+A and
/// Ctrl+Shift+A select all and none, Ctrl+Delete and Ctrl+Insert; Tab leaves the grid. Actions of the view stand at the
/// top of the menu.
class cDataGrid : public QObject {
  Q_OBJECT
 public:
  /// All must outlive this object.
  cDataGrid(Statements& statements, Diagnostics diagnostics, const UserOptions& options);
  ~cDataGrid() override;

  // The view of the grid. Call Grid first, once. The view may be destroyed before this object.
  void Grid(QTableView& grid);
  [[nodiscard]] QTableView* Grid() const;
  void ParentForm(GridOwner& owner) { core_.owner = &owner; }
  [[nodiscard]] GridOwner* ParentForm() const { return core_.owner; }

  // Properties.
  /// "[column] ASC" or "[column] DESC", empty while unsorted. Setting it sorts, and also applies to rows connected
  /// later. An unknown column leaves the grid unsorted.
  [[nodiscard]] QString sSortString() const { return core_.sortString; }
  void sSortString(const QString& sort);
  /// Whether long texts wrap: rows are three lines high then.
  [[nodiscard]] bool bWrapped() const { return look_.bWrapped(); }
  void bWrapped(bool wrapped) { look_.bWrapped(wrapped); }
  /// Whether all cells of a wrapped grid wrap words, and not only those of `sWrapColumn`.
  [[nodiscard]] bool bWordWrap() const { return look_.bWordWrap(); }
  void bWordWrap(bool wrap) { look_.bWordWrap(wrap); }
  [[nodiscard]] QString sWrapColumn() const { return look_.sWrapColumn(); }
  void sWrapColumn(const QString& field) { look_.sWrapColumn(field); }
  /// Whether a click on a heading sorts by its column; on at first.
  [[nodiscard]] bool bColSorting() const { return keys_.bColSorting(); }
  void bColSorting(bool on) { keys_.bColSorting(on); }
  /// Background instead of the user's row colours: 24-bit RGB with red in the lowest byte, or -1 (at first) for none.
  [[nodiscard]] int lCustomBackColor() const { return look_.lCustomBackColor(); }
  void lCustomBackColor(int colour) { look_.lCustomBackColor(colour); }
  /// Whether the user may ask to find a text (`FindWanted`); off at first.
  [[nodiscard]] bool bFinding() const { return keys_.bFinding(); }
  void bFinding(bool on) { keys_.bFinding(on); }
  /// Whether the user may resize columns; on at first.
  [[nodiscard]] bool bColResizing() const { return look_.bColResizing(); }
  void bColResizing(bool on) { look_.bColResizing(on); }
  /// Field of the column under the mouse pointer; empty when there is none.
  [[nodiscard]] QString sMouseGridColumn() const { return keys_.sMouseGridColumn(); }
  /// Whether an empty grid has no message panel.
  [[nodiscard]] bool bHideNoRecords() const { return look_.bHideNoRecords(); }
  void bHideNoRecords(bool hide) { look_.bHideNoRecords(hide); }
  /// Whether the user changed data through the grid.
  [[nodiscard]] bool bDataChanged() const { return rows_.bDataChanged(); }
  void bDataChanged(bool changed) { rows_.bDataChanged(changed); }
  /// Whether rows may be inserted (Ctrl+Insert); off at first.
  [[nodiscard]] bool bRowInserts() const { return rows_.bRowInserts(); }
  void bRowInserts(bool on) { rows_.bRowInserts(on); }
  /// Whether the grid is editable: deletions reach the database, and cells of a writable recordset can be edited. It is
  /// also editable while its owner is in edit mode.
  [[nodiscard]] bool EditMode() const { return rows_.EditMode(); }
  void EditMode(bool on) { rows_.EditMode(on); }
  /// What the grid control lets the user do. At first deletes are off and updates are on. A grid that allows deletes
  /// but no updates refuses Ctrl+Delete with a message.
  [[nodiscard]] bool AllowDelete() const { return rows_.AllowDelete(); }
  void AllowDelete(bool allow) { rows_.AllowDelete(allow); }
  [[nodiscard]] bool AllowUpdate() const { return rows_.AllowUpdate(); }
  void AllowUpdate(bool allow) { rows_.AllowUpdate(allow); }
  /// Shows only rows that meet a condition on the recordset, such as "[Make] = 'Ford' AND [Year] > 2010"; all rows when
  /// it is empty or cannot be read. The headings of its columns are marked.
  [[nodiscard]] QString sFilter() const { return filter_; }
  void sFilter(const QString& filter);
  /// Of the rows that `sFilter` leaves, shows only those that pass a test; without a test all. Connecting other rows
  /// ends it. The current row stays current if it is still shown.
  void ShowOnly(std::function<bool(const StoredRow& row)> test);
  /// Name of the column (or, separated by ",", columns) that identifies a row.
  [[nodiscard]] QString sLineIDColumn() const { return place_.sLineIDColumn(); }
  void sLineIDColumn(const QString& field) { SetLineID(field); }
  /// Middle part of the names of the procedures that insert ("proc_addp_..._InsertRow") and delete ("proc_delp_...")
  /// rows. When it is empty a deletion only removes the row from the grid.
  [[nodiscard]] QString StoredProc() const { return rows_.StoredProc(); }
  void StoredProc(const QString& name) { rows_.StoredProc(name); }
  /// Tagged text of the grid; its value "MSG" is shown when the grid is empty.
  [[nodiscard]] QString Tag() const { return look_.Tag(); }
  void Tag(const QString& tagged) { look_.Tag(tagged); }
  /// The connected recordset, none at first.
  [[nodiscard]] Recordset* DataSource() const { return core_.records; }
  void DataSource(Recordset* records);

  // State.
  /// Number in the first line ID column of the current row, 0 without a row.
  [[nodiscard]] qint64 RecordID() const { return place_.RecordID(); }
  /// Position of the current row in the shown order, -1 without one.
  [[nodiscard]] qint64 CurrentRow() const { return place_.CurrentRow(); }
  /// Field of the current column, empty without one.
  [[nodiscard]] QString CurrentField() const { return place_.CurrentField(); }
  [[nodiscard]] qint64 RowCount() const { return core_.RowCount(); }
  [[nodiscard]] qint64 SelectedCount() const { return place_.SelectedCount(); }
  /// Values of the first line ID column of the selected rows, or else of the current row, in the order shown.
  [[nodiscard]] std::vector<qint64> SelectedIDs() const { return place_.SelectedIDs(); }
  [[nodiscard]] qint64 FirstVisibleRow() const { return place_.FirstVisibleRow(); }
  /// The text of a cell; flags are "Yes" and "No".
  [[nodiscard]] QString CellText(qint64 row, const QString& field) const { return place_.CellText(row, field); }

  // Binding.
  /// Shows a recordset: formats the columns, applies sort and filter, and makes the first row current. When the same
  /// columns were shown before, their widths, order and visibility stay. A forward-only recordset is refused
  /// (reported).
  void ConnectRecordset(Recordset& records);
  void DisconnectRecordset();
  /// Shows the connected recordset again after other rows were read into it. Without one, the rows of "proc_selp_" +
  /// StoredProc + " ( header ID )" are read.
  void RebindData();
  /// Reads the rows again. Sort, first visible row, current row, up to 10,000 selected rows (by their keys), current
  /// column and horizontal position stay. A failure shows "Unexpected error when reloading the grid." and leaves the
  /// old rows.
  /// \param reread  reads the rows into the connected recordset; may throw. Empty for its own Requery.
  void Requery(const std::function<void()>& reread = {});
  /// Empties the grid: no recordset, columns or sort.
  void Clear();

  // Columns.
  /// Sets headings and formats of the columns again.
  /// \param highlightedColumns  names in brackets ("[Make][Model]") of columns to be shown in blue, now and later
  void FormatColumns(const QString& highlightedColumns = {}) { look_.FormatColumns(highlightedColumns); }
  /// Replaces the heading of a field.
  void SetCaption(const QString& field, const QString& caption) { look_.SetCaption(field, caption); }
  /// Hides or shows columns. From then on only the window hides and shows them. The user shows and hides the other
  /// columns in the menus of the headings and of the grid.
  void HideColumns(const QStringList& fields, bool hide = true) { look_.HideColumns(fields, hide); }
  /// The fields whose columns are not shown, in lower case.
  [[nodiscard]] QSet<QString> HiddenFields() const { return look_.HiddenFields(); }
  /// The shown columns in their order.
  [[nodiscard]] std::vector<GridShownColumn> ShownColumns() const;
  /// Locked columns cannot be edited.
  void LockColumns(const QStringList& fields, bool lock = true) { look_.LockColumns(fields, lock); }
  /// Restores the user's layout of this grid whenever columns are shown that were not shown before.
  /// \param registry  must outlive this object
  /// \param window    name of the owner window ("frmMain")
  void KeepLayout(RegistryValues& registry, const QString& window) { look_.KeepLayout(registry, window); }
  /// Stores place, width and visibility of the columns that the user changed; to be called before the window closes.
  /// Does nothing without `KeepLayout` or shown columns. Columns are stored by name, so a layout never hides another
  /// column of the host.
  void SaveLayout() { look_.SaveLayout(); }
  /// Columns that are drawn as ticks and can be clicked (with a hand as pointer). Columns of truth values are always
  /// drawn as ticks.
  void FlagColumns(const QStringList& fields) { look_.FlagColumns(fields); }
  /// Sets a function that gives the reason why the flag of a cell has no effect, or an empty text. A cell with a reason
  /// is greyed and has it as its tip.
  void SetFlagReasons(std::function<QString(qint64 row, const QString& field)> reasonOf) {
    look_.SetFlagReasons(std::move(reasonOf));
  }
  /// Shows a button at the right of the current cell of a column, see `EditButtonClicked`.
  void AddEditButton(const QString& field) { look_.AddEditButton(field); }
  /// The cell style of this name. A new one has "Tahoma" in the size of the row font.
  GridStyle& AddStyleSet(const QString& name) { return look_.AddStyleSet(name); }
  /// Sets a function that gives the style of a row; an empty name is the ordinary style. `kSectionStyle` has the user's
  /// section font and colours.
  void SetRowStyle(std::function<QString(qint64 row)> styleOf) { look_.SetRowStyle(std::move(styleOf)); }
  static constexpr char kSectionStyle[] = "Section";

  // Rows.
  /// Makes the first row current whose field equals a value (texts ignoring case).
  /// \return false when there is none; the current row stays
  bool FindLine(const QString& field, const Value& value) { return place_.FindLine(field, value); }
  using Search = GridPlace::Search;
  /// Goes to the next cell of the shown columns that contains a text, ignoring case; visits every row once. \return
  /// false when there is none
  bool FindText(const QString& text, Search search) { return place_.FindText(text, search); }
  /// Makes a row current and scrolls it into view.
  void MoveTo(qint64 row) { place_.MoveTo(row); }
  void SetFirstVisibleRow(qint64 row) { place_.SetFirstVisibleRow(row); }
  /// Makes a cell current and marks it until another cell becomes current.
  void HighlightCell(qint64 row, const QString& field) { place_.HighlightCell(row, field); }
  void SelectAll() { place_.SelectAll(); }
  void SelectNone() { place_.SelectNone(); }
  /// Copies the current cell's text to the clipboard. \return the text
  QString CopyCellValue() { return place_.CopyCellValue(); }
  /// Copies the selected rows to the clipboard: a line with the headings, then a line for each row, with the visible
  /// columns in the order shown, separated by tabs.
  void CopyRows() { place_.CopyRows(); }
  /// What Ctrl+C does: `CopyRows` when several rows are selected, otherwise `CopyCellValue`.
  void Copy() { place_.Copy(); }
  /// Deletes the current row as Ctrl+Delete does, even when the grid does not allow deletes.
  void Remove() { rows_.Remove(); }
  /// Deletes all rows, one by one, once the owner agreed; stops at the first failure.
  void RemoveRows() { rows_.RemoveRows(); }
  /// Inserts a row above the current one through "proc_addp_" + StoredProc + "_InsertRow" and reads the rows again.
  void InsertRow() { rows_.InsertRow(); }
  /// Writes the edits of the current row. \return false when it failed (reported; the row is then as it was read)
  bool CommitRow() { return rows_.CommitRow(); }

  void SetHeaderID(qint64 id) { rows_.SetHeaderID(id); }
  void SetLineID(const QString& field) { place_.SetLineID(field); }
  /// Ignores the next key press.
  void IgnoreKeyPress() { keys_.IgnoreKeyPress(); }

 Q_SIGNALS:
  /// A left click, or Space, on any cell; the row is current by then. A double-click is one click.
  void CellClicked(const QString& field, qint64 recordId);
  /// A row was deleted in the database and taken out of the grid.
  void Deleted(qint64 recordId);
  /// A click on the button of `AddEditButton`, or Space in its cell.
  void EditButtonClicked(const QString& field, qint64 recordId);
  /// Ctrl+F, or "Find..." in the menu.
  void FindWanted();
  /// Another row or column became current.
  void RowColChanged();

 private:
  void ShowRows(bool newColumns);
  void ApplySort();
  void ApplyFilter();

  GridCore core_;
  GridLook look_;
  GridPlace place_;
  GridRows rows_;
  GridKeys keys_;
  std::unique_ptr<GridEvents> events_;
  Recordset ownRecords_;
  QString filter_;
  std::function<bool(const StoredRow&)> shownOnly_;
  QStringList shownFields_;
};

}  // namespace qbx
