// Where the user is in the rows of a grid.

#pragma once

#include "grids/ui/cDataGrid.h"

namespace qbx {

/// Rows that are selected without asking, and whose selection outlives reading them again.
inline constexpr qint64 kFewRows = 500;

/// Kept around a change of the rows. The visible rows are remembered by their keys, so that they stay where they are
/// when rows above them come or go.
struct cDataGrid::Place {
  struct Row {
    qint64 row = -1;
    std::vector<Value> key;
  };
  qint64 firstVisible = 0;
  std::vector<Row> visible;  ///< without the current row, which may move by what was done to it
  Row current;
  std::vector<Row> selected;  ///< when they are several, and few
  int column = -1;
  int horizontal = 0;
};

}  // namespace qbx
