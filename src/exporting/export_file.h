// Rows exported to a file.

#pragma once

#include <QString>
#include <functional>

#include "exporting/export_sheet.h"

namespace qbx {

enum class ExportFormat : quint8 { kCsv, kXlsx, kXls };

struct ExportOptions {
  bool headings = true;      ///< a first row with the headings
  bool formulaSafe = false;  ///< CSV: an apostrophe before a text that a spreadsheet program would take for a formula
};

/// Called now and then with the number of rows written. \return false to give the file up
using ExportProgress = std::function<bool(qint64 rows)>;

enum class ExportEnd : quint8 { kDone, kCancelled, kFailed };

struct ExportOutcome {
  ExportEnd end = ExportEnd::kDone;
  QString error;        ///< of kFailed: why, for the user
  qint64 cutTexts = 0;  ///< cells of a workbook whose text was longer than it takes, and was cut
};

/// Why the sheet is too large for this format, to be told before anything is asked or written; empty when they can.
[[nodiscard]] QString TooManyRows(const ExportSheet& sheet, ExportFormat format, const ExportOptions& options);

/// What is told once about texts that were cut; empty when none was.
[[nodiscard]] QString CutTextsNote(const ExportOutcome& outcome);

/// What the event of an export says: the file's name, rows and columns. A long name loses its beginning, since an event holds 80 characters.
[[nodiscard]] QString ExportEventDetails(const QString& path, const ExportSheet& sheet);

/// Writes the rows to a temporary file, which takes the name given once it is complete. A file that fails or is given up leaves
/// what was there as it was. Never throws.
[[nodiscard]] ExportOutcome WriteExport(const ExportSheet& sheet, ExportFormat format, const QString& path,
                                        const ExportOptions& options, const ExportProgress& progress);

}  // namespace qbx
