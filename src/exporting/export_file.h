// Exporting rows to a file.

#pragma once

#include <QString>
#include <functional>

#include "exporting/export_sheet.h"

namespace qbx {

enum class ExportFormat : quint8 { kCsv, kXlsx, kXls };

struct ExportOptions {
  bool headings = true;  ///< whether the first row holds the headings
  /// CSV only: puts an apostrophe before a text that a spreadsheet program would take for a formula.
  bool formulaSafe = false;
};

/// Called from time to time with the number of rows written. \return false to give the file up
using ExportProgress = std::function<bool(qint64 rows)>;

enum class ExportEnd : quint8 { kDone, kCancelled, kFailed };

struct ExportOutcome {
  ExportEnd end = ExportEnd::kDone;
  QString error;        ///< of kFailed: the reason, for the user
  qint64 cutTexts = 0;  ///< number of texts in a workbook that were too long for a cell and were cut
};

/// Why the sheet is too large for this format; empty when it is not. To be shown before anything is asked or written.
[[nodiscard]] QString TooManyRows(const ExportSheet& sheet, ExportFormat format, const ExportOptions& options);

/// The note about texts that were cut; empty when none was.
[[nodiscard]] QString CutTextsNote(const ExportOutcome& outcome);

/// The details of the event of an export: the file's name, rows and columns. A long name loses its beginning, because
/// an event holds 80 characters.
[[nodiscard]] QString ExportEventDetails(const QString& path, const ExportSheet& sheet);

/// Writes the rows to a temporary file and renames it when it is complete. After a failure, or when the file is given
/// up, an older file stays unchanged. Never throws.
[[nodiscard]] ExportOutcome WriteExport(const ExportSheet& sheet, ExportFormat format, const QString& path,
                                        const ExportOptions& options, const ExportProgress& progress);

}  // namespace qbx
