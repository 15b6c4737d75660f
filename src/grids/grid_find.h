// Finding a row of a grid.

#pragma once

#include <QString>

#include "database/recordset.h"
#include "grids/grid_columns.h"

namespace qbx {

/// The first row, in the current order, whose shown cell text begins with `start`, ignoring case.
/// \param column  position in the recordset
/// \return -1 when there is none
[[nodiscard]] qint64 FindStart(const Recordset& rows, int column, const GridColumn& format, const QString& start);

/// The first row whose cell equals a value: numbers by value, whatever their types; texts ignoring case.
/// \return -1 when there is none
[[nodiscard]] qint64 FindValue(const Recordset& rows, int column, const Value& value);

}  // namespace qbx
