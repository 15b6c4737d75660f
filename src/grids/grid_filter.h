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
  std::vector<int> columns;  ///< the columns that the condition uses
};

/// Turns a condition such as "[Make] = 'Ford' AND Year > 2010 OR Model LIKE 'Trans%'" into a test of a stored row.
///
/// A clause is a field (in brackets when its name has a blank), one of = <> < <= > >= LIKE, and a number, a text in
/// single quotes (doubled inside), a date between "#" (dd/mm/yyyy) or NULL. AND binds more strongly than OR; clauses
/// have no brackets around them. LIKE compares with a text that may begin and end with "%" or "*". Texts are compared
/// ignoring case. For NULL only "= NULL" and "<> NULL" can be true.
/// \param rows  the columns that the condition names; the test is for rows with the same columns
/// \return nothing when the condition cannot be read or names an unknown field
[[nodiscard]] std::optional<GridFilter> ParseGridFilter(const QString& condition, const Recordset& rows);

}  // namespace qbx
