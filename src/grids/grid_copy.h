// What copying from a grid puts on the clipboard.

#pragma once

#include <QString>
#include <vector>

#include "database/recordset.h"
#include "grids/grid_columns.h"

namespace qbx {

/// Rows as lines of cells separated by tabs, as spreadsheets take them, under a line with the headings. Tabs and line
/// breaks inside a cell become blanks. Lines end with CR LF.
/// \param shown  positions of the columns in the recordset, in the order to be copied
/// \param rows   positions in the current order
[[nodiscard]] QString CopiedRows(const Recordset& records, const std::vector<GridColumn>& columns,
                                 const std::vector<int>& shown, const std::vector<qint64>& rows);

}  // namespace qbx
