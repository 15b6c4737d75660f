// Columns of a list in which nothing stands.

#pragma once

#include <QSet>
#include <QString>

#include "reports/report.h"

namespace qbx {

/// The marked columns of a list that hold nothing in any of these rows, in lower case. None when there is no row. Rows are read up to the one with which every
/// column was seen to hold something.
[[nodiscard]] QSet<QString> EmptyColumns(const Report& report, ReportRows& rows);

/// The same of the rows that the report reads. They are read once more than the report does, unless it marks no column.
/// \throws ReportError, DatabaseError
[[nodiscard]] QSet<QString> EmptyColumns(const Report& report, ReportDatabase& database);

}  // namespace qbx
