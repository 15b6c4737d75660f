// Finding a text anywhere in the rows of a grid.

#pragma once

#include <QString>
#include <vector>

#include "database/recordset.h"
#include "grids/grid_columns.h"

namespace qbx {

struct FoundCell {
  qint64 row = -1;  ///< -1 for none
  int column = -1;
};

/// The next cell whose shown text contains a text, ignoring case. Ticks are not searched.
/// \param shown      positions in the recordset of the columns to search, in the order shown
/// \param from       the row where the search begins; it is searched first. The search goes over the end and visits
///                   every row once
/// \param backwards  whether to go upwards
[[nodiscard]] FoundCell FindText(const Recordset& rows, const std::vector<GridColumn>& columns,
                                 const std::vector<int>& shown, const QString& text, qint64 from, bool backwards);

}  // namespace qbx
