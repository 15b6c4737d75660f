// What is exported: columns over the rows of a recordset.

#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "database/recordset.h"

namespace qbx {

enum class ExportType : quint8 { kInteger, kDecimal, kDate, kTick, kText };

inline constexpr int kMostColumnWidth = 255;  ///< the most that a workbook allows

struct ExportColumn {
  int field = 0;  ///< position in the recordset
  QString heading;
  ExportType type = ExportType::kText;
  int width = 0;     ///< in characters
  int decimals = 0;  ///< of kDecimal; 0 for as many as a number needs
};

/// The export column for a column of a recordset: its type from that of the field, its width from the usual length of
/// values.
[[nodiscard]] ExportColumn MakeExportColumn(const std::vector<Column>& columns, int field, const QString& heading);

/// The rows of a client-side recordset in its order and filter. The recordset must outlive the sheet and stay unchanged
/// while it is written.
struct ExportSheet {
  QString title;
  std::vector<ExportColumn> columns;
  const Recordset& rows;
  std::optional<qint64> filled = {};  ///< the number of first rows to export; nothing for all rows

  [[nodiscard]] qint64 RowCount() const { return filled.value_or(rows.RecordCount()); }
  [[nodiscard]] Cell At(qint64 row, const ExportColumn& column) const { return rows.At(row, column.field); }
};

}  // namespace qbx
