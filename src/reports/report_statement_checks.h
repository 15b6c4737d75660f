// The check that a report's statement only reads.

#pragma once

#include <QString>
#include <QStringList>

namespace qbx {

/// Checks that a text is one SELECT that writes nothing. Refused are a second statement, INTO, procedures, and a
/// comment in a comment, which database servers read differently. A parameter inside quotes is refused, too: its value
/// could end the quotes.
/// \throws ReportError without a place
void CheckOnlyReads(const QString& statement);

/// The parameters in the statement, such as "@UserID".
[[nodiscard]] QStringList ParametersOf(const QString& statement);

}  // namespace qbx
