// Where the user is in the rows of a grid, and which rows are selected.

#pragma once

#include <QItemSelection>
#include <QString>
#include <vector>

#include "grids/ui/grid_core.h"

namespace qbx {

/// The current cell, the selection and the rows in view; what `cDataGrid` says of them holds here.
class GridPlace {
 public:
  /// Rows that are selected without asking.
  static constexpr qint64 kFewRows = 500;
  /// Selected rows that stay selected when the rows are read again, unless all are.
  static constexpr qint64 kKeptSelected = 10'000;

  explicit GridPlace(GridCore& core) : core_(core) {}

  [[nodiscard]] qint64 CurrentRow() const;
  [[nodiscard]] QString CurrentField() const;
  [[nodiscard]] qint64 FirstVisibleRow() const;
  [[nodiscard]] QString CellText(qint64 row, const QString& field) const;
  void MoveTo(qint64 row);
  void SetFirstVisibleRow(qint64 row);
  /// Makes a cell current and its row the selected one, without scrolling.
  void SetCurrent(qint64 row, int column);
  /// The column itself when it can be current, otherwise the first that is shown.
  [[nodiscard]] int VisibleColumn(int column) const;
  /// The current cell's column was hidden: another one of its row becomes current, and the selection stays.
  void LeaveHiddenColumn();
  bool FindLine(const QString& field, const Value& value);
  /// Where a text is looked for from.
  enum class Search { kFromHere, kNext, kPrevious };
  bool FindText(const QString& text, Search search);
  void HighlightCell(qint64 row, const QString& field);

  // Keys of rows.
  [[nodiscard]] QString sLineIDColumn() const { return lineIdColumn_; }
  void SetLineID(const QString& field) { lineIdColumn_ = field; }
  [[nodiscard]] qint64 RecordID() const;
  /// The values of the line ID columns; empty without a row.
  [[nodiscard]] std::vector<Value> KeyOf(qint64 row) const;
  /// The row with a key; -1 when there is none. \param hint  where the row was; tried first
  [[nodiscard]] qint64 RowOfKey(const std::vector<Value>& key, qint64 hint) const;

  // The selection.
  void SelectAll();
  void SelectNone();
  [[nodiscard]] qint64 SelectedCount() const;
  /// In rising order.
  [[nodiscard]] std::vector<qint64> SelectedRows() const;
  [[nodiscard]] std::vector<qint64> SelectedIDs() const;
  QString CopyCellValue();
  void CopyRows();
  void Copy();

  /// Kept around a change of the rows. The visible rows are remembered by their keys, so that they stay where they are
  /// when rows above them come or go.
  struct Kept {
    struct Row {
      qint64 row = -1;
      std::vector<Value> key;
    };
    qint64 firstVisible = 0;
    std::vector<Row> visible;  ///< without the current row, which may move by what was done to it
    Row current;
    std::vector<Row> selected;  ///< when they are several, and not all
    qint64 all = 0;             ///< how many there were when all were selected, else 0
    int column = -1;
    int horizontal = 0;
  };
  [[nodiscard]] Kept Remember() const;
  void Restore(const Kept& place);

 private:
  [[nodiscard]] std::vector<int> LineIdColumns() const;
  [[nodiscard]] std::vector<qint64> RowsOf(const Kept& place) const;
  [[nodiscard]] QItemSelection AllCells() const;
  [[nodiscard]] QItemSelection SelectionOf(std::vector<qint64> rows) const;

  GridCore& core_;
  QString lineIdColumn_;
};

}  // namespace qbx
