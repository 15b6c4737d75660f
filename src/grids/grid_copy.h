// Copying rows of a grid to the clipboard.

#pragma once

#include <QString>
#include <vector>

#include "database/recordset.h"
#include "grids/grid_columns.h"

namespace qbx {

/// Rows as lines of cells separated by tabs, as spreadsheet programs take them, after a line with the headings. A text
/// of several lines becomes one line; tabs inside a cell become blanks. Lines end with CR LF.
/// \param shown  positions of the columns in the recordset, in the order to be copied
/// \param rows   positions in the current order
[[nodiscard]] QString CopiedRows(const Recordset& records, const std::vector<GridColumn>& columns,
                                 const std::vector<int>& shown, const std::vector<qint64>& rows);

}  // namespace qbx
