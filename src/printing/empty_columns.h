// The empty columns of a list.

#pragma once

#include <QSet>
#include <QString>

#include "reports/report.h"

namespace qbx {

/// The marked columns of a list that are empty in all of these rows, in lower case. None when there is no row. Reading
/// stops when no column can be empty any more.
[[nodiscard]] QSet<QString> EmptyColumns(const Report& report, ReportRows& rows);

/// The empty columns in the rows that the report reads. The rows are read one extra time, unless the report marks no
/// column.
/// \throws ReportError, DatabaseError
[[nodiscard]] QSet<QString> EmptyColumns(const Report& report, ReportDatabase& database);

}  // namespace qbx
