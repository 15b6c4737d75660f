// The order of rows by one column.

#pragma once

#include <vector>

#include "database/packed_rows.h"

namespace qbx {

/// Sorts row numbers by a column: NULL first, text without regard to case, equal rows by their numbers.
/// \param order  numbers of rows of `rows`
void SortRows(std::vector<quint32>& order, const PackedRows& rows, int column, bool descending);

/// Inserts a row where `SortRows` would place it.
/// \param order  sorted, without the row
void InsertRow(std::vector<quint32>& order, quint32 row, const PackedRows& rows, int column, bool descending);

}  // namespace qbx
