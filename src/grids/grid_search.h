// Finding a text anywhere in the rows of a grid.

#pragma once

#include <QString>
#include <vector>

#include "database/recordset.h"
#include "grids/grid_columns.h"

namespace qbx {

struct FoundCell {
  qint64 row = -1;  ///< -1: there is none
  int column = -1;
};

/// The next cell that holds a text as it is shown, without regard to case. Ticks hold none.
/// \param shown      positions of the columns in the recordset that are searched, in the order shown
/// \param from       row where the search begins, which is looked at first; it ends after all rows, wherever the last one stands
/// \param backwards  rows upwards
[[nodiscard]] FoundCell FindText(const Recordset& rows, const std::vector<GridColumn>& columns,
                                 const std::vector<int>& shown, const QString& text, qint64 from, bool backwards);

}  // namespace qbx
