// Where the user is in the rows of a grid.

#pragma once

#include "grids/ui/cDataGrid.h"

namespace qbx {

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
  int column = -1;
  int horizontal = 0;
};

}  // namespace qbx
