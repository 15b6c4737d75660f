// Columns that a list leaves out.

#pragma once

#include <QSet>
#include <QString>

#include "reports/report_definition.h"

namespace qbx {

/// Removes the objects of these columns from a report. Objects of columns further right move left by the width of the
/// removed columns. Objects of no column stay.
/// \param fields  names in lower case
void HideColumns(ReportDefinition& report, const QSet<QString>& fields);

}  // namespace qbx
