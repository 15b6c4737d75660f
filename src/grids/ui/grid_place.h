// The current cell of a grid and its selected rows.

#pragma once

#include <QItemSelection>
#include <QString>
#include <vector>

#include "grids/ui/grid_core.h"

namespace qbx {

/// The current cell, the selection and the rows in view. The comments of `cDataGrid` hold here, too.
class GridPlace {
 public:
  /// More rows than this are selected only after a question.
  static constexpr qint64 kFewRows = 500;
  /// At most this many rows stay selected when the rows are read again, unless all are selected.
  static constexpr qint64 kKeptSelected = 10'000;

  explicit GridPlace(GridCore& core) : core_(core) {}

  [[nodiscard]] qint64 CurrentRow() const;
  [[nodiscard]] QString CurrentField() const;
  [[nodiscard]] qint64 FirstVisibleRow() const;
  [[nodiscard]] QString CellText(qint64 row, const QString& field) const;
  void MoveTo(qint64 row);
  void SetFirstVisibleRow(qint64 row);
  /// Makes a cell current and selects its row, without scrolling.
  void SetCurrent(qint64 row, int column);
  /// The column itself if it is shown, otherwise the first one that is.
  [[nodiscard]] int VisibleColumn(int column) const;
  /// The current column was hidden: makes another cell of the row current. The selection stays.
  void LeaveHiddenColumn();
  bool FindLine(const QString& field, const Value& value);
  /// Where a search begins.
  enum class Search { kFromHere, kNext, kPrevious };
  bool FindText(const QString& text, Search search);
  void HighlightCell(qint64 row, const QString& field);

  // Keys of rows.
  [[nodiscard]] QString sLineIDColumn() const { return lineIdColumn_; }
  void SetLineID(const QString& field) { lineIdColumn_ = field; }
  [[nodiscard]] qint64 RecordID() const;
  /// The values of the line ID columns; empty without a row.
  [[nodiscard]] std::vector<Value> KeyOf(qint64 row) const;
  /// The row with a key, -1 when there is none. \param hint  the earlier row, which is tried first
  [[nodiscard]] qint64 RowOfKey(const std::vector<Value>& key, qint64 hint) const;

  // The selection.
  void SelectAll();
  void SelectNone();
  [[nodiscard]] qint64 SelectedCount() const;
  /// In ascending order.
  [[nodiscard]] std::vector<qint64> SelectedRows() const;
  [[nodiscard]] std::vector<qint64> SelectedIDs() const;
  QString CopyCellValue();
  void CopyRows();
  void Copy();

  /// Kept while the rows change. Visible rows are kept by their keys, so that they stay in place when rows above them
  /// appear or disappear.
  struct Kept {
    struct Row {
      qint64 row = -1;
      std::vector<Value> key;
    };
    qint64 firstVisible = 0;
    std::vector<Row> visible;  ///< without the current row, which the change may have moved
    Row current;
    std::vector<Row> selected;  ///< when several but not all rows are selected
    qint64 all = 0;             ///< the number of rows when all were selected, else 0
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
