// Columns that a list leaves out.

#pragma once

#include <QSet>
#include <QString>

#include "reports/report_definition.h"

namespace qbx {

/// Takes the objects of these columns out of a report. What belongs to a column further right moves left by the width of those that went; what belongs to
/// no column stays.
/// \param fields  names in lower case
void HideColumns(ReportDefinition& report, const QSet<QString>& fields);

}  // namespace qbx
