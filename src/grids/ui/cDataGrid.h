// The data grid: one wrapper around a table view, which shows a recordset.

#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

#include "grids/ui/grid_core.h"
#include "grids/ui/grid_events.h"
#include "grids/ui/grid_keys.h"
#include "grids/ui/grid_look.h"
#include "grids/ui/grid_place.h"
#include "grids/ui/grid_rows.h"

namespace qbx {

/// A column as the grid shows it.
struct GridShownColumn {
  int column = 0;  ///< position in the recordset
  QString heading;
  int width = 0;  ///< logical pixels
};

/// Shows a recordset in a table view and does everything with it that a user can do in a list: sort, select, find, copy,
/// insert and delete rows.
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
/// connection, and whoever reads other rows into it calls `ConnectRecordset` or `RebindData` before events run again.
/// A property is read by its name and set by its name with a value. No call throws: failures are reported under the
/// routine's name, and the grid stays as it was.
///
/// Keys: arrows, Page Up/Down, Home/End (with Ctrl: first/last row); letters find in the sorted column (in the current
/// one while unsorted), Backspace shortens; Space is a click on the current cell; Ctrl+C copies, Ctrl+A and
/// Ctrl+Shift+A select all and none, Ctrl+Delete and Ctrl+Insert; Tab leaves the grid. Actions of the view stand at the
/// top of the menu.
class cDataGrid : public QObject {
  Q_OBJECT
 public:
  /// All must outlive this.
  cDataGrid(Statements& statements, Diagnostics diagnostics, const UserOptions& options);
  ~cDataGrid() override;

  // What the grid stands in. Grid comes first, once; the view may go away before this.
  void Grid(QTableView& grid);
  [[nodiscard]] QTableView* Grid() const;
  void ParentForm(GridOwner& owner) { core_.owner = &owner; }
  [[nodiscard]] GridOwner* ParentForm() const { return core_.owner; }

  // Properties.
  /// "[column] ASC" or "[column] DESC", empty while unsorted. Setting it sorts, and keeps it for rows connected later;
  /// an unknown column leaves the grid unsorted.
  [[nodiscard]] QString sSortString() const { return core_.sortString; }
  void sSortString(const QString& sort);
  /// Long texts wrap: rows are three lines high.
  [[nodiscard]] bool bWrapped() const { return look_.bWrapped(); }
  void bWrapped(bool wrapped) { look_.bWrapped(wrapped); }
  /// Word wrap in all cells of a wrapped grid; otherwise only in `sWrapColumn`.
  [[nodiscard]] bool bWordWrap() const { return look_.bWordWrap(); }
  void bWordWrap(bool wrap) { look_.bWordWrap(wrap); }
  [[nodiscard]] QString sWrapColumn() const { return look_.sWrapColumn(); }
  void sWrapColumn(const QString& field) { look_.sWrapColumn(field); }
  /// A click on a heading sorts by that column; on at first.
  [[nodiscard]] bool bColSorting() const { return keys_.bColSorting(); }
  void bColSorting(bool on) { keys_.bColSorting(on); }
  /// Background instead of the user's row colours, 24-bit RGB with red in the lowest byte; -1 (at first): none.
  [[nodiscard]] int lCustomBackColor() const { return look_.lCustomBackColor(); }
  void lCustomBackColor(int colour) { look_.lCustomBackColor(colour); }
  /// The user may ask to find a text (`FindWanted`); off at first.
  [[nodiscard]] bool bFinding() const { return keys_.bFinding(); }
  void bFinding(bool on) { keys_.bFinding(on); }
  /// The user may resize columns; on at first.
  [[nodiscard]] bool bColResizing() const { return look_.bColResizing(); }
  void bColResizing(bool on) { look_.bColResizing(on); }
  /// Field of the column under the mouse pointer, empty outside.
  [[nodiscard]] QString sMouseGridColumn() const { return keys_.sMouseGridColumn(); }
  /// No message panel over an empty grid.
  [[nodiscard]] bool bHideNoRecords() const { return look_.bHideNoRecords(); }
  void bHideNoRecords(bool hide) { look_.bHideNoRecords(hide); }
  /// The user changed data through the grid.
  [[nodiscard]] bool bDataChanged() const { return rows_.bDataChanged(); }
  void bDataChanged(bool changed) { rows_.bDataChanged(changed); }
  /// Rows may be inserted (Ctrl+Insert); off at first.
  [[nodiscard]] bool bRowInserts() const { return rows_.bRowInserts(); }
  void bRowInserts(bool on) { rows_.bRowInserts(on); }
  /// The grid is editable: deletions reach the database, and cells of a writable recordset can be edited. It is also
  /// editable while its owner is in edit mode.
  [[nodiscard]] bool EditMode() const { return rows_.EditMode(); }
  void EditMode(bool on) { rows_.EditMode(on); }
  /// What the grid control lets the user do. Deletes are off, updates on at first. A grid that allows deletes but no
  /// updates refuses Ctrl+Delete with a message.
  [[nodiscard]] bool AllowDelete() const { return rows_.AllowDelete(); }
  void AllowDelete(bool allow) { rows_.AllowDelete(allow); }
  [[nodiscard]] bool AllowUpdate() const { return rows_.AllowUpdate(); }
  void AllowUpdate(bool allow) { rows_.AllowUpdate(allow); }
  /// Shows only rows that fulfil a condition on the recordset, such as "[Make] = 'Ford' AND [Year] > 2010"; empty: all.
  /// A condition that cannot be read shows all. The headings of its columns are marked.
  [[nodiscard]] QString sFilter() const { return filter_; }
  void sFilter(const QString& filter);
  /// Shows, of the rows that `sFilter` leaves, only those that pass a test; none: all. It ends when other rows are connected. The current row stays
  /// current when it is still shown.
  void ShowOnly(std::function<bool(const StoredRow& row)> test);
  /// Name of the column (or, separated by ",", columns) that identifies a row.
  [[nodiscard]] QString sLineIDColumn() const { return place_.sLineIDColumn(); }
  void sLineIDColumn(const QString& field) { SetLineID(field); }
  /// Stem of the procedures that insert ("proc_addp_..._InsertRow") and delete ("proc_delp_...") rows; empty: a deletion
  /// takes the row from the grid only.
  [[nodiscard]] QString StoredProc() const { return rows_.StoredProc(); }
  void StoredProc(const QString& name) { rows_.StoredProc(name); }
  /// Tagged text of the grid; the value "MSG" is shown over the empty grid.
  [[nodiscard]] QString Tag() const { return look_.Tag(); }
  void Tag(const QString& tagged) { look_.Tag(tagged); }
  /// The connected recordset, none at first.
  [[nodiscard]] Recordset* DataSource() const { return core_.records; }
  void DataSource(Recordset* records);

  // State.
  /// Numeric value of the current row's (first) line ID column, 0 without a row.
  [[nodiscard]] qint64 RecordID() const { return place_.RecordID(); }
  /// Position of the current row in the shown order, -1 without one.
  [[nodiscard]] qint64 CurrentRow() const { return place_.CurrentRow(); }
  /// Field of the current column, empty without one.
  [[nodiscard]] QString CurrentField() const { return place_.CurrentField(); }
  [[nodiscard]] qint64 RowCount() const { return core_.RowCount(); }
  [[nodiscard]] qint64 SelectedCount() const { return place_.SelectedCount(); }
  /// Values of the (first) line ID column of the selected rows, or of the current one, in the order shown.
  [[nodiscard]] std::vector<qint64> SelectedIDs() const { return place_.SelectedIDs(); }
  [[nodiscard]] qint64 FirstVisibleRow() const { return place_.FirstVisibleRow(); }
  /// What a cell shows; flags are "Yes" and "No".
  [[nodiscard]] QString CellText(qint64 row, const QString& field) const { return place_.CellText(row, field); }

  // Binding.
  /// Shows a recordset: columns are formatted, sort and filter applied, the first row becomes current. With the columns
  /// that were shown before, their widths, order and visibility stay. A forward-only recordset is refused (reported).
  void ConnectRecordset(Recordset& records);
  void DisconnectRecordset();
  /// Shows the connected recordset anew, after other rows were read into it. Without a connected one the rows of
  /// "proc_selp_" + StoredProc + " ( header ID )" are read.
  void RebindData();
  /// Reads the rows again. Sort, first visible row, current row and up to 10,000 selected ones (by their keys), current
  /// column and horizontal position stay. A failure shows "Unexpected error when reloading the grid." and leaves the rows that were there.
  /// \param reread  what reads them into the connected recordset; may throw. Empty: its own Requery.
  void Requery(const std::function<void()>& reread = {});
  /// Empties the grid: no recordset, no columns, no sort.
  void Clear();

  // Columns.
  /// Headings and formats of the columns anew.
  /// \param highlightedColumns  names in brackets ("[Make][Model]") of columns to be shown in blue, now and later
  void FormatColumns(const QString& highlightedColumns = {}) { look_.FormatColumns(highlightedColumns); }
  /// Another heading than the field's name.
  void SetCaption(const QString& field, const QString& caption) { look_.SetCaption(field, caption); }
  /// Hides columns, or shows them. From then on they are the window's to show and hide, and not offered to the user; of the others the user
  /// chooses in the menu of the heading, or of the grid.
  void HideColumns(const QStringList& fields, bool hide = true) { look_.HideColumns(fields, hide); }
  /// The fields whose columns are not shown, in lower case.
  [[nodiscard]] QSet<QString> HiddenFields() const { return look_.HiddenFields(); }
  /// The columns that are not hidden, in the order shown.
  [[nodiscard]] std::vector<GridShownColumn> ShownColumns() const;
  /// Locked columns cannot be edited.
  void LockColumns(const QStringList& fields, bool lock = true) { look_.LockColumns(fields, lock); }
  /// Brings the user's column layout of this grid back whenever columns are shown that were not shown before.
  /// \param registry  must outlive this
  /// \param window    name of the owner window ("frmMain")
  void KeepLayout(RegistryValues& registry, const QString& window) { look_.KeepLayout(registry, window); }
  /// Stores place, width and visibility of the columns that the user changed, when `KeepLayout` was called and columns are shown; for the
  /// window's end. They are kept by their names, so that other columns of the host hide no other one.
  void SaveLayout() { look_.SaveLayout(); }
  /// Columns drawn as ticks and offered for a click (a hand is shown over them); columns that hold truth values are
  /// drawn as ticks in any case.
  void FlagColumns(const QStringList& fields) { look_.FlagColumns(fields); }
  /// Tells why the flag of a cell means nothing, empty: it does. The cell is greyed then, and has the reason as its tip.
  void SetFlagReasons(std::function<QString(qint64 row, const QString& field)> reasonOf) {
    look_.SetFlagReasons(std::move(reasonOf));
  }
  /// Shows a button at the right of the current cell of a column, see `EditButtonClicked`.
  void AddEditButton(const QString& field) { look_.AddEditButton(field); }
  /// A named cell style, in "Tahoma" of the row font's size at first; the one of that name when it exists.
  GridStyle& AddStyleSet(const QString& name) { return look_.AddStyleSet(name); }
  /// Tells the style of a row; empty name: the ordinary one. `kSectionStyle` has the user's section font and colours.
  void SetRowStyle(std::function<QString(qint64 row)> styleOf) { look_.SetRowStyle(std::move(styleOf)); }
  static constexpr char kSectionStyle[] = "Section";

  // Rows.
  /// Makes the first row current whose field equals a value (text without regard to case).
  /// \return false when there is none; the current row stays
  bool FindLine(const QString& field, const Value& value) { return place_.FindLine(field, value); }
  using Search = GridPlace::Search;
  /// Goes to the next cell of the shown columns that holds a text, without regard to case, once round all rows. \return false when there is none
  bool FindText(const QString& text, Search search) { return place_.FindText(text, search); }
  /// Makes a row current and scrolls it into view.
  void MoveTo(qint64 row) { place_.MoveTo(row); }
  void SetFirstVisibleRow(qint64 row) { place_.SetFirstVisibleRow(row); }
  /// Makes a cell current and marks it until another cell becomes current.
  void HighlightCell(qint64 row, const QString& field) { place_.HighlightCell(row, field); }
  void SelectAll() { place_.SelectAll(); }
  void SelectNone() { place_.SelectNone(); }
  /// Puts the current cell's text on the clipboard. \return the text
  QString CopyCellValue() { return place_.CopyCellValue(); }
  /// Puts the selected rows on the clipboard: a line with the headings, then a line each, visible columns in the shown
  /// order, separated by tabs.
  void CopyRows() { place_.CopyRows(); }
  /// The user's Ctrl+C: two and more selected rows as `CopyRows`, otherwise the current cell.
  void Copy() { place_.Copy(); }
  /// Deletes the current row, as Ctrl+Delete does but without asking whether the grid allows it.
  void Remove() { rows_.Remove(); }
  /// Deletes all rows, one by one, once the owner agreed; stops at the first that fails.
  void RemoveRows() { rows_.RemoveRows(); }
  /// Inserts a row above the current one through "proc_addp_" + StoredProc + "_InsertRow" and reads again.
  void InsertRow() { rows_.InsertRow(); }
  /// Writes what was edited in the current row. \return false when it failed (reported; the row stays as it was read)
  bool CommitRow() { return rows_.CommitRow(); }

  void SetHeaderID(qint64 id) { rows_.SetHeaderID(id); }
  void SetLineID(const QString& field) { place_.SetLineID(field); }
  /// Swallows the next key press.
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
