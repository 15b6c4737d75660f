// Whether the statement of a report only reads.

#pragma once

#include <QString>
#include <QStringList>

namespace qbx {

/// Checks that a text is one SELECT that writes nothing: no second statement, no INTO, no procedure, nothing that one database server takes apart otherwise
/// than another (a comment in a comment), and no parameter inside quotes, which would let its value out of them.
/// \throws ReportError without a place
void CheckOnlyReads(const QString& statement);

/// The parameters that it names, as "@UserID".
[[nodiscard]] QStringList ParametersOf(const QString& statement);

}  // namespace qbx
