// What is exported: columns over the rows of a recordset.

#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "database/recordset.h"

namespace qbx {

enum class ExportType : quint8 { kInteger, kDecimal, kDate, kTick, kText };

inline constexpr int kMostColumnWidth = 255;  ///< that a workbook takes

struct ExportColumn {
  int field = 0;  ///< position in the recordset
  QString heading;
  ExportType type = ExportType::kText;
  int width = 0;     ///< in characters
  int decimals = 0;  ///< of kDecimal; 0: as many as a number needs
};

/// A column of a recordset as it is exported: the type from the field's, a width that fits what it usually holds.
[[nodiscard]] ExportColumn MakeExportColumn(const std::vector<Column>& columns, int field, const QString& heading);

/// The rows of a client-side recordset in its order and filter. The recordset must outlive the sheet and stay unchanged while it is written.
struct ExportSheet {
  QString title;
  std::vector<ExportColumn> columns;
  const Recordset& rows;
  std::optional<qint64> filled = {};  ///< so many of the rows, the first ones; nothing: all

  [[nodiscard]] qint64 RowCount() const { return filled.value_or(rows.RecordCount()); }
  [[nodiscard]] Cell At(qint64 row, const ExportColumn& column) const { return rows.At(row, column.field); }
};

}  // namespace qbx
