// Conditions on the rows of a grid.

#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "database/recordset.h"

namespace qbx {

/// A condition in words, such as "[Make] = 'Ford' AND Year > 2010 OR Model LIKE 'Trans%'", as a test of a stored row.
///
/// A clause is a field (in brackets when its name has a blank), one of = <> < <= > >= LIKE, and a number, a text in
/// single quotes (doubled inside), a date between "#" (dd/mm/yyyy) or NULL. AND binds closer than OR; there are no
/// brackets around clauses. LIKE compares with a text that may begin and end with "%" or "*". Text compares without
/// regard to case. Nothing but "= NULL" and "<> NULL" is true of NULL.
/// \param rows  must outlive the test and keep its columns
/// \return nothing when the condition cannot be read or names an unknown field
[[nodiscard]] std::optional<std::function<bool(qint64 storedRow)>> ParseGridFilter(const QString& condition,
                                                                                   const Recordset& rows);

}  // namespace qbx
