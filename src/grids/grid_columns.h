// The columns of a grid: headings, formats, and the texts of their cells.

#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "database/session.h"
#include "database/value.h"

namespace qbx {

/// How a column's cells are written.
enum class GridFormat : quint8 {
  kPlain,     ///< numbers in their shortest form; dates with their time unless it is midnight
  kFixed,     ///< numbers with a fixed number of decimals
  kDate,      ///< dd/mm/yyyy
  kDateTime,  ///< dd/mm/yyyy hh:mm:ss
  kTick,      ///< a truth value
};

struct GridColumn {
  QString field;    ///< name in the recordset
  QString heading;  ///< the caption that the user reads
  ValueType type = ValueType::kText;
  GridFormat format = GridFormat::kPlain;
  int decimals = 0;          ///< of kFixed, 1 to 10
  bool highlighted = false;  ///< shown in blue

  [[nodiscard]] bool IsNumber() const {
    return type == ValueType::kInt || type == ValueType::kDouble || type == ValueType::kDecimal;
  }
};

/// A heading and a format for every column of a recordset: the heading is the field's name with blanks for "_". The
/// decimals are those of the column, at most ten. Dates have no time when the column keeps none.
/// \param highlightedColumns  names in brackets ("[Make][Model]") of the columns that are shown in blue
[[nodiscard]] std::vector<GridColumn> gridFormatColumns(const std::vector<Column>& columns,
                                                        const QString& highlightedColumns = {});

/// The text of a cell. NULL is empty, a tick "Yes" or "No".
[[nodiscard]] QString GridText(const Cell& cell, const GridColumn& column);

/// A text of several lines (an address) on one line, with ", " between them.
[[nodiscard]] QString OneLine(const QString& text);

/// The text that the user typed into a cell, converted to the column's type. An empty text is NULL.
/// \return nothing when the column cannot hold it
[[nodiscard]] std::optional<Value> GridValue(const QString& text, const GridColumn& column);

}  // namespace qbx
