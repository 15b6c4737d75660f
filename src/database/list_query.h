// Filling a list from a query, without the list's control. Nothing calls it yet: today's lists have rules of their own.

#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "database/statements.h"

namespace qbx {

struct ListRow {
  QString text;
  Value data;  ///< NULL when no data field was named
};

/// What the tag of a list control sets.
struct ListRules {
  bool upperCase = false;  ///< tag CAPS is "1"
  int maxLength = 0;       ///< tag MaxLength; 0: texts are not cut

  [[nodiscard]] static ListRules FromTag(const QString& tag);
};

/// Reads one column of a procedure's rows, and the data of each row.
/// \param dataField  the column of the data; empty: none
/// \return nothing when the query failed (already reported) or lacks a column
[[nodiscard]] std::optional<std::vector<ListRow>> FillListFromQuery(Statements& statements, const QString& sql,
                                                                    const QString& textField,
                                                                    const QString& dataField = {},
                                                                    const ListRules& rules = {});

/// The row that a filled list shows as selected: the last one that matches. Every row whose data is `data` matches, and
/// the first row whose text is `text`.
/// \param data  NULL: no data to select
/// \return -1 when no row matches
[[nodiscard]] int RowToSelect(const std::vector<ListRow>& rows, const QString& text, const Value& data);

}  // namespace qbx
