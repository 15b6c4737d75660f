// All rows of a recordset in their order, kept while single rows change.

#pragma once

#include <vector>

#include "database/packed_rows.h"

namespace qbx {

/// Sorts once and keeps the order, so that a filter sorts nothing again, and of few rows that were changed only these are sorted in anew.
///
/// Whoever changes cells counts the changes and tells of each that it makes itself; a count that moved on otherwise makes the order be worked out anew.
class SortedRows {
 public:
  /// \param column  position of the column; -1: unsorted
  void SortBy(int column, bool descending);
  [[nodiscard]] int Column() const { return column_; }

  /// Other rows are there now.
  void Forget() { changes_ = kUnknown; }
  /// A cell was changed. \param changes  the count of changes, this one included
  void Changed(quint32 row, int column, qint64 changes);

  /// The numbers of all rows by the sort.
  /// \param changes  the count of changes to the rows
  [[nodiscard]] const std::vector<quint32>& Of(const PackedRows& rows, qint64 changes);

 private:
  static constexpr qint64 kUnknown = -1;

  int column_ = -1;
  bool descending_ = false;
  std::vector<quint32> rows_;
  qint64 changes_ = kUnknown;   // that `rows_` has, but for those in `moved_`
  std::vector<quint32> moved_;  // rows that may stand elsewhere now
};

}  // namespace qbx
