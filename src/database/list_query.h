// Filling a list from a query, without the list's control. Nothing calls it yet: the lists of today have rules of their own.

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

/// What the tag of a list control asks for.
struct ListRules {
  bool upperCase = false;  ///< tag CAPS is "1"
  int maxLength = 0;       ///< tag MaxLength, above 0; 0: texts are not cut

  [[nodiscard]] static ListRules FromTag(const QString& tag);
};

/// Reads one column (and the data that stands behind each row) of a procedure's rows.
/// \param dataField  empty: none
/// \return nothing when the query failed (already reported), or has no such columns
[[nodiscard]] std::optional<std::vector<ListRow>> FillListFromQuery(Statements& statements, const QString& sql,
                                                                    const QString& textField,
                                                                    const QString& dataField = {},
                                                                    const ListRules& rules = {});

/// The row that a filled list shows as selected: the last one that was selected while the rows were added, a row being
/// selected when its data is `data`, or when its text is `text` (which counts for the first such row only).
/// \param data  NULL: no data to select
/// \return -1 when there is none
[[nodiscard]] int RowToSelect(const std::vector<ListRow>& rows, const QString& text, const Value& data);

}  // namespace qbx
