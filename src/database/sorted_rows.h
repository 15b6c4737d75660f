// The sorted order of all rows of a recordset, kept while single rows change.

#pragma once

#include <vector>

#include "database/packed_rows.h"

namespace qbx {

/// Sorts once and keeps the order. So a new filter needs no sort, and after a few changes only the changed rows are
/// placed again.
///
/// Whoever changes cells counts all changes, and calls `Changed` for each change of its own. When the count has moved
/// without such a call, the whole order is sorted again.
class SortedRows {
 public:
  /// \param column  position of the column; -1: unsorted
  void SortBy(int column, bool descending);
  [[nodiscard]] int Column() const { return column_; }

  /// Forgets the order, because the rows were replaced.
  void Forget() { changes_ = kUnknown; }
  /// Reports one changed cell. \param changes  the count of changes, with this one
  void Changed(quint32 row, int column, qint64 changes);

  /// The numbers of all rows in sorted order.
  /// \param changes  the count of changes to the rows
  [[nodiscard]] const std::vector<quint32>& Of(const PackedRows& rows, qint64 changes);

 private:
  static constexpr qint64 kUnknown = -1;

  int column_ = -1;
  bool descending_ = false;
  std::vector<quint32> rows_;
  qint64 changes_ = kUnknown;   // the count that the order is sorted for, apart from the rows of `moved_`
  std::vector<quint32> moved_;  // rows whose place may have changed
};

}  // namespace qbx
