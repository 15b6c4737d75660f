// The data grid: one wrapper around a table view, which shows a recordset.

#pragma once

#include <QPersistentModelIndex>
#include <QPoint>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "database/recordset.h"
#include "database/statements.h"
#include "diagnostics/diagnostics.h"
#include "grids/ui/grid_style.h"
#include "settings/user_options.h"

class QItemSelection;
class QKeyEvent;
class QModelIndex;
class QMouseEvent;
class QMenu;
class QTableView;

namespace qbx {

class GridModel;
class GridDelegate;
class GridEvents;
class GridFinder;
class EmptyGridPanel;
class RegistryValues;

/// What a data grid asks of the window that it stands in. A window that only shows rows overrides nothing.
class GridOwner {
 public:
  virtual ~GridOwner() = default;

  /// Called with every key that was released over the grid, after the grid's own handling.
  virtual void Grid_KeyUp(int /*key*/, Qt::KeyboardModifiers /*shift*/, QTableView& /*grid*/) {}
  /// Key of the record that the rows belong to; goes into the insert statement. 0: the one of `SetHeaderID`.
  [[nodiscard]] virtual qint64 HeaderID() const { return 0; }
  /// More parameters of the insert statement, as SQL text; empty: none.
  [[nodiscard]] virtual QString sInsertRowExtraParams() const { return {}; }
  /// Whether the window is in edit mode: rows may be inserted, and a deletion reaches the database.
  [[nodiscard]] virtual bool EditMode() const { return false; }
  /// Asked before a row is deleted; false, after the window has told the user why, leaves the row.
  [[nodiscard]] virtual bool MayDeleteRows() { return true; }
  /// Connection whose transaction the window's changes belong to; none: the shared one.
  [[nodiscard]] virtual Connection* ADOConnTrans() { return nullptr; }
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
///   grid.OnCellClick([this](const QString& field, qint64 recordId) { ... });
///   grid.ConnectRecordset(rows);
///
/// The rows are read from the recordset whenever a cell is drawn and are never copied: the recordset must outlive the
/// connection, and whoever reads other rows into it calls `ConnectRecordset` or `RebindData` before events run again.
/// A property is read by its name and set by its name with a value. No call throws: failures are reported under the
/// routine's name, and the grid stays as it was.
///
/// Keys: arrows, Page Up/Down, Home/End (with Ctrl: first/last row); letters find in the sorted column (in the current
/// one while unsorted), Backspace shortens; Space is a click on the current cell; Ctrl+C copies, Ctrl+A and
/// Ctrl+Shift+A select all and none, Ctrl+F asks what to find, Ctrl+Delete and Ctrl+Insert; Tab leaves the grid.
class cDataGrid {
 public:
  /// All must outlive this.
  cDataGrid(Statements& statements, Diagnostics diagnostics, const UserOptions& options);
  ~cDataGrid();
  cDataGrid(const cDataGrid&) = delete;
  cDataGrid& operator=(const cDataGrid&) = delete;

  // What the grid stands in. Grid comes first, once; the view may go away before this.
  void Grid(QTableView& grid);
  [[nodiscard]] QTableView* Grid() const;
  void ParentForm(GridOwner& owner) { owner_ = &owner; }
  [[nodiscard]] GridOwner* ParentForm() const { return owner_; }

  // Properties.
  /// "[column] ASC" or "[column] DESC", empty while unsorted. Setting it sorts, and keeps it for rows connected later;
  /// an unknown column leaves the grid unsorted.
  [[nodiscard]] QString sSortString() const { return sortString_; }
  void sSortString(const QString& sort);
  /// Long texts wrap: rows are three lines high.
  [[nodiscard]] bool bWrapped() const { return wrapped_; }
  void bWrapped(bool wrapped);
  /// Word wrap in all cells of a wrapped grid; otherwise only in `sWrapColumn`.
  [[nodiscard]] bool bWordWrap() const { return wordWrap_; }
  void bWordWrap(bool wrap);
  [[nodiscard]] QString sWrapColumn() const { return wrapColumn_; }
  void sWrapColumn(const QString& field);
  /// A click on a heading sorts by that column; on at first.
  [[nodiscard]] bool bColSorting() const { return colSorting_; }
  void bColSorting(bool on);
  /// Background instead of the user's row colours, 24-bit RGB with red in the lowest byte; -1 (at first): none.
  [[nodiscard]] int lCustomBackColor() const { return customBackColor_; }
  void lCustomBackColor(int colour);
  /// The user may resize columns; on at first.
  [[nodiscard]] bool bColResizing() const { return colResizing_; }
  void bColResizing(bool on);
  /// Field of the column under the mouse pointer, empty outside.
  [[nodiscard]] QString sMouseGridColumn() const { return mouseColumn_; }
  /// No message panel over an empty grid.
  [[nodiscard]] bool bHideNoRecords() const { return hideNoRecords_; }
  void bHideNoRecords(bool hide);
  /// The user changed data through the grid.
  [[nodiscard]] bool bDataChanged() const { return dataChanged_; }
  void bDataChanged(bool changed) { dataChanged_ = changed; }
  /// Rows may be inserted (Ctrl+Insert); off at first.
  [[nodiscard]] bool bRowInserts() const { return rowInserts_; }
  void bRowInserts(bool on) { rowInserts_ = on; }
  /// The grid is editable: deletions reach the database, and cells of a writable recordset can be edited. It is also
  /// editable while its owner is in edit mode.
  [[nodiscard]] bool EditMode() const;
  void EditMode(bool on) { editMode_ = on; }
  /// What the grid control lets the user do. Deletes are off, updates on at first. A grid that allows deletes but no
  /// updates refuses Ctrl+Delete with a message.
  [[nodiscard]] bool AllowDelete() const { return allowDelete_; }
  void AllowDelete(bool allow) { allowDelete_ = allow; }
  [[nodiscard]] bool AllowUpdate() const { return allowUpdate_; }
  void AllowUpdate(bool allow) { allowUpdate_ = allow; }
  /// Shows only rows that fulfil a condition on the recordset, such as "[Make] = 'Ford' AND [Year] > 2010"; empty: all.
  /// A condition that cannot be read shows all. The headings of its columns are marked.
  [[nodiscard]] QString sFilter() const { return filter_; }
  void sFilter(const QString& filter);
  /// Name of the column (or, separated by ",", columns) that identifies a row.
  [[nodiscard]] QString sLineIDColumn() const { return lineIdColumn_; }
  void sLineIDColumn(const QString& field) { SetLineID(field); }
  /// Stem of the procedures that insert ("proc_addp_..._InsertRow") and delete ("proc_delp_...") rows; empty: a deletion
  /// takes the row from the grid only.
  [[nodiscard]] QString StoredProc() const { return storedProc_; }
  void StoredProc(const QString& name) { storedProc_ = name; }
  /// Tagged text of the grid; the value "MSG" is shown over the empty grid.
  [[nodiscard]] QString Tag() const { return tag_; }
  void Tag(const QString& tagged);
  /// The connected recordset, none at first.
  [[nodiscard]] Recordset* DataSource() const { return records_; }
  void DataSource(Recordset* records);

  // State.
  /// Numeric value of the current row's (first) line ID column, 0 without a row.
  [[nodiscard]] qint64 RecordID() const;
  /// Position of the current row in the shown order, -1 without one.
  [[nodiscard]] qint64 CurrentRow() const;
  /// Field of the current column, empty without one.
  [[nodiscard]] QString CurrentField() const;
  [[nodiscard]] qint64 RowCount() const;
  [[nodiscard]] qint64 SelectedCount() const;
  [[nodiscard]] qint64 FirstVisibleRow() const;
  /// What a cell shows; flags are "Yes" and "No".
  [[nodiscard]] QString CellText(qint64 row, const QString& field) const;

  // Binding.
  /// Shows a recordset: columns are formatted, sort and filter applied, the first row becomes current. With the columns
  /// that were shown before, their widths, order and visibility stay. A forward-only recordset is refused (reported).
  /// The fields whose columns are not shown, in lower case.
  [[nodiscard]] const QSet<QString>& HiddenFields() const { return hidden_; }
  void ConnectRecordset(Recordset& records);
  void DisconnectRecordset();
  /// Shows the connected recordset anew, after other rows were read into it. Without a connected one the rows of
  /// "proc_selp_" + StoredProc + " ( header ID )" are read.
  void RebindData();
  /// Reads the rows again. Sort, first visible row, current row and up to 500 selected ones (by their keys), current
  /// column and horizontal position stay. A failure shows "Unexpected error when reloading the grid." and leaves the rows that were there.
  /// \param reread  what reads them into the connected recordset; may throw. Empty: its own Requery.
  void Requery(const std::function<void()>& reread = {});
  /// Empties the grid: no recordset, no columns, no sort.
  void Clear();

  // Columns.
  /// Headings and formats of the columns anew.
  /// \param highlightedColumns  names in brackets ("[Make][Model]") of columns to be shown in blue, now and later
  void FormatColumns(const QString& highlightedColumns = {});
  /// Another heading than the field's name.
  void SetCaption(const QString& field, const QString& caption);
  void HideColumns(const QStringList& fields, bool hide = true);
  /// Locked columns cannot be edited.
  void LockColumns(const QStringList& fields, bool lock = true);
  /// Brings the user's column layout of this grid back whenever columns are shown that were not shown before.
  /// \param registry  must outlive this
  /// \param window    name of the owner window ("frmMain")
  void KeepLayout(RegistryValues& registry, const QString& window);
  /// Stores places and widths of the columns that the user changed, when `KeepLayout` was called and columns are shown; for the window's end.
  /// Which columns are shown is the window's to say each time: kept by position, it would hide others once the host's
  /// columns come in another order.
  void SaveLayout();
  /// Columns drawn as ticks and offered for a click (a hand is shown over them); columns that hold truth values are
  /// drawn as ticks in any case.
  void FlagColumns(const QStringList& fields);
  /// Shows a button at the right of the current cell of a column, see `OnEditButton`.
  void AddEditButton(const QString& field);
  /// A named cell style, in "Tahoma" of the row font's size at first; the one of that name when it exists.
  GridStyle& AddStyleSet(const QString& name);
  /// Tells the style of a row; empty name: the ordinary one. `kSectionStyle` has the user's section font and colours.
  void SetRowStyle(std::function<QString(qint64 row)> styleOf);
  static constexpr char kSectionStyle[] = "Section";

  // Rows.
  /// Makes the first row current whose field equals a value (text without regard to case).
  /// \return false when there is none; the current row stays
  bool FindLine(const QString& field, const Value& value);
  /// Makes a row current and scrolls it into view.
  void MoveTo(qint64 row);
  void SetFirstVisibleRow(qint64 row);
  /// Makes a cell current and marks it until another cell becomes current.
  void HighlightCell(qint64 row, const QString& field);
  void SelectAll();
  void SelectNone();
  /// Puts the current cell's text on the clipboard. \return the text
  QString CopyCellValue();
  /// Puts the selected rows on the clipboard: a line with the headings, then a line each, visible columns in the shown
  /// order, separated by tabs.
  void CopyRows();
  /// The user's Ctrl+C: two and more selected rows as `CopyRows`, otherwise the current cell.
  void Copy();
  /// Deletes the current row, as Ctrl+Delete does but without asking whether the grid allows it.
  void Remove();
  /// Deletes all rows, one by one, once the owner agreed; stops at the first that fails.
  void RemoveRows();
  /// Inserts a row above the current one through "proc_addp_" + StoredProc + "_InsertRow" and reads again.
  void InsertRow();
  /// Writes what was edited in the current row. \return false when it failed (reported; the row stays as it was read)
  bool CommitRow();

  void SetHeaderID(qint64 id) { headerId_ = id; }
  void SetLineID(const QString& field);
  /// Swallows the next key press.
  void IgnoreKeyPress() { ignoreKeyPress_ = true; }

  // What the owner may want to know.
  /// A left click, or Space, on any cell; the row is current by then. A double-click is one click.
  void OnCellClick(std::function<void(const QString& field, qint64 recordId)> callback);
  /// After a row was deleted in the database and taken out of the grid.
  void OnDeleted(std::function<void(qint64 recordId)> callback);
  /// A click on the button of `AddEditButton`, or Space in its cell.
  void OnEditButton(std::function<void(const QString& field, qint64 recordId)> callback);
  /// Another row or column became current.
  void OnRowColChange(std::function<void()> callback);

  // Events of the grid control. They arrive by themselves; public so that a window may pass on what it caught itself.
  void HeadClick(int column);
  /// \return whether the key was handled and the control must not see it
  bool KeyPress(const QKeyEvent& event);
  void KeyUp(const QKeyEvent& event);
  void MouseDown(const QMouseEvent& event);
  void MouseUp(const QMouseEvent& event);
  void MouseMove(const QMouseEvent& event);
  void ColResize();
  void RowColChange(const QModelIndex& current, const QModelIndex& previous);
  void GotFocus();
  void MouseLeave();
  void Resize();
  void AfterColUpdate();
  /// \return false cancels the deletion
  bool BeforeDelete();
  /// \return false when the row could not be deleted in the database (reported)
  bool AfterDelete();
  [[nodiscard]] bool BeforeInsert() const;
  [[nodiscard]] bool BeforeUpdate() const;
  /// Reads the user's colours and fonts again; happens by itself when the palette changes.
  void ApplyStyles();

 private:
  struct Place;  // where the user is in the rows

  bool Guarded(const char* routine, const std::function<void()>& work);
  [[nodiscard]] std::vector<int> LineIdColumns() const;
  [[nodiscard]] std::vector<Value> KeyOf(qint64 row) const;
  [[nodiscard]] std::vector<qint64> RowsOf(const Place& place) const;
  [[nodiscard]] qint64 RowOfKey(const std::vector<Value>& key, qint64 hint) const;
  [[nodiscard]] std::vector<qint64> SelectedRows() const;
  [[nodiscard]] QItemSelection AllCells() const;
  [[nodiscard]] Place Remember() const;
  void Restore(const Place& place);
  void SetCurrent(qint64 row, int column);
  void PrepareView();
  void ShowRows(bool newColumns);
  void ApplySort();
  void ApplyFilter();
  void ApplyRowHeight();
  void ApplyHidden();
  void ShowSortMark();
  void ShowPanel();
  void FitColumns();
  void ColumnChanged(int column);
  [[nodiscard]] int SortedColumn() const;
  [[nodiscard]] int VisibleColumn(int column) const;
  void DeleteSelected();
  void DeleteByUser();
  bool DeleteInDatabase(qint64 row);
  void DropRows(const std::vector<qint64>& rows);
  bool EditCell(qint64 row, int column, const QString& text);
  bool Shortcut(const QKeyEvent& event);
  bool FindTyped(const QKeyEvent& event);
  void Find(const QString& start);
  enum class ClickedBy { kMouse, kKey };
  void ClickCell(const QModelIndex& index, ClickedBy by);
  void ShowClickedFlag();
  void KeepClickedFlag();
  void Say(const QString& text, MessageIcon icon);
  void Menu(const QPoint& position);
  void AskFind();

  Statements& statements_;
  Diagnostics diagnostics_;
  const UserOptions& options_;
  GridOwner* owner_ = nullptr;
  QPointer<QTableView> view_;
  QPointer<QMenu> menu_;  // the last one that was opened
  std::unique_ptr<GridModel> model_;
  std::unique_ptr<GridDelegate> delegate_;
  std::unique_ptr<GridEvents> events_;
  std::unique_ptr<GridFinder> finder_;
  std::unique_ptr<EmptyGridPanel> panel_;
  Recordset* records_ = nullptr;
  Recordset ownRecords_;

  QString sortString_;
  QString filter_;
  QString wrapColumn_;
  QString mouseColumn_;
  QString lineIdColumn_;
  QString storedProc_;
  QString tag_;
  bool wrapped_ = false;
  bool wordWrap_ = false;
  bool colSorting_ = true;
  bool colResizing_ = true;
  bool hideNoRecords_ = false;
  bool dataChanged_ = false;
  bool rowInserts_ = false;
  bool editMode_ = false;
  bool allowDelete_ = false;
  bool allowUpdate_ = true;
  bool ignoreKeyPress_ = false;
  int customBackColor_ = -1;
  qint64 headerId_ = 0;
  std::vector<Value> deleteKey_;  // of the row about to be deleted
  Qt::KeyboardModifiers clickModifiers_;
  bool secondClick_ = false;  // of a double-click
  QPoint clickedAt_;
  QPersistentModelIndex clickedFlag_;  // while its click is answered
  int controlKey_ = 0;                 // Delete or Insert went down with Ctrl
  QSet<QString> hidden_;               // fields in lower case
  QStringList shownFields_;
  QSet<int> changedByUser_;    // columns moved or resized, in this session or one before
  bool layingOut_ = false;     // the grid moves and resizes columns itself
  bool fittedToRows_ = false;  // the widths are those of rows, not of headings alone
  RegistryValues* registry_ = nullptr;
  QString layoutWindow_;
  int rowHeight_ = 0;  // as stored by the user's layout, 0: by the font

  std::function<void(const QString&, qint64)> onCellClick_;
  std::function<void(qint64)> onDeleted_;
  std::function<void(const QString&, qint64)> onEditButton_;
  std::function<void()> onRowColChange_;
};

}  // namespace qbx
