// The statement that reads the rows of a report.

#pragma once

#include <QString>

#include "reports/report_values.h"

namespace qbx {

/// The source's SELECT with literals in place of its parameters; one that is unset is NULL.
[[nodiscard]] QString StatementOf(const ReportSource& source, const ReportDefinition& report,
                                  const ParameterValues& parameters);

/// A value as its parameter takes it. \return NULL for a value that it cannot take
[[nodiscard]] Value ParameterValue(ParameterType type, const Value& value);

}  // namespace qbx
