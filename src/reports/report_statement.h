// The statement that reads the rows of a report.

#pragma once

#include <QString>

#include "reports/report_values.h"

namespace qbx {

/// The source's SELECT with literals in place of its parameters; an unset parameter becomes NULL.
[[nodiscard]] QString StatementOf(const ReportSource& source, const ReportDefinition& report,
                                  const ParameterValues& parameters);

/// A value converted to the type of its parameter. \return NULL when it cannot be converted
[[nodiscard]] Value ParameterValue(ParameterType type, const Value& value);

}  // namespace qbx
