// Conditions on the rows of a grid.

#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "database/recordset.h"

namespace qbx {

struct GridFilter {
  std::function<bool(const StoredRow& row)> test;
  std::vector<int> columns;  ///< that the condition looks at
};

/// A condition in words, such as "[Make] = 'Ford' AND Year > 2010 OR Model LIKE 'Trans%'", as a test of a stored row.
///
/// A clause is a field (in brackets when its name has a blank), one of = <> < <= > >= LIKE, and a number, a text in
/// single quotes (doubled inside), a date between "#" (dd/mm/yyyy) or NULL. AND binds closer than OR; there are no
/// brackets around clauses. LIKE compares with a text that may begin and end with "%" or "*". Text compares without
/// regard to case. Nothing but "= NULL" and "<> NULL" is true of NULL.
/// \param rows  whose columns the condition names; the test is for rows with the same ones
/// \return nothing when the condition cannot be read or names an unknown field
[[nodiscard]] std::optional<GridFilter> ParseGridFilter(const QString& condition, const Recordset& rows);

}  // namespace qbx
