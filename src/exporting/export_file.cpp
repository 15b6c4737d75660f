#include "exporting/export_file.h"

#include <QSaveFile>
#include <QTemporaryFile>

#include "exporting/export_parts.h"
#include "platform/safe_file.h"

namespace qbx {

namespace {

struct SheetSize {
  qint64 rows;
  qint64 columns;
};
constexpr SheetSize kXlsxSize = {1'048'576, 16'384};
constexpr SheetSize kXlsSize = {65'536, 256};

void CopyInto(QSaveFile& to, QFile& from) {
  constexpr qint64 kChunk = qint64{1} << 20;
  if (!from.seek(0)) throw ExportError{from.errorString()};
  while (!from.atEnd()) {
    const QByteArray chunk = from.read(kChunk);
    if (chunk.isEmpty()) throw ExportError{from.errorString()};
    WriteAll(to, chunk.constData(), chunk.size());
  }
}

/// The .xlsx workbook is made in the folder for temporary files, because its library opens the file itself by name.
qint64 WriteXlsxInto(const ExportSheet& sheet, QSaveFile& file, const ExportOptions& options,
                     const ExportProgress& progress) {
  QTemporaryFile workbook;
  if (!workbook.open()) throw ExportError{workbook.errorString()};
  const qint64 cut = WriteXlsx(sheet, workbook.fileName(), options, progress);
  CopyInto(file, workbook);
  return cut;
}

}  // namespace

QString TooManyRows(const ExportSheet& sheet, ExportFormat format, const ExportOptions& options) {
  if (format == ExportFormat::kCsv) return {};
  const SheetSize most = format == ExportFormat::kXlsx ? kXlsxSize : kXlsSize;
  const qint64 rows = sheet.RowCount() + (options.headings ? 1 : 0);
  const auto columns = static_cast<qint64>(sheet.columns.size());
  if (rows > most.rows) {
    const QString refusal =
        options.headings ? QStringLiteral("There are %1 rows with the headings, and a sheet of this format takes %2.")
                         : QStringLiteral("There are %1 rows, and a sheet of this format takes %2.");
    return refusal.arg(rows).arg(most.rows);
  }
  if (columns <= most.columns) return {};
  return QStringLiteral("There are %1 columns, and a sheet of this format takes %2.").arg(columns).arg(most.columns);
}

QString CutTextsNote(const ExportOutcome& outcome) {
  if (outcome.cutTexts == 0) return {};
  return QStringLiteral(
             "Texts that were cut because they are longer than 32,767 characters, which is all that a cell takes: %1.")
      .arg(outcome.cutTexts);
}

QString ExportEventDetails(const QString& path, const ExportSheet& sheet) {
  constexpr qsizetype kDetails = 80;
  const QString counts = QStringLiteral(" Rows:%1 Columns:%2").arg(sheet.RowCount()).arg(sheet.columns.size());
  return QLatin1String("File:") + path.right(kDetails - 5 - counts.size()) + counts;
}

ExportOutcome WriteExport(const ExportSheet& sheet, ExportFormat format, const QString& path,
                          const ExportOptions& options, const ExportProgress& progress) {
  if (const QString refusal = TooManyRows(sheet, format, options); !refusal.isEmpty())
    return {.end = ExportEnd::kFailed, .error = refusal};
  if (const QString problem = NameProblem(path); !problem.isEmpty())
    return {.end = ExportEnd::kFailed, .error = problem};
  ExportOutcome outcome;
  QSaveFile file(path);
  try {
    if (!file.open(QIODevice::WriteOnly)) throw ExportError{file.errorString()};
    switch (format) {
      case ExportFormat::kCsv:
        WriteCsv(sheet, file, options, progress);
        break;
      case ExportFormat::kXlsx:
        outcome.cutTexts = WriteXlsxInto(sheet, file, options, progress);
        break;
      case ExportFormat::kXls:
        outcome.cutTexts = WriteXls(sheet, file, options, progress);
        break;
    }
    if (!file.flush() || !file.commit()) throw ExportError{file.errorString()};
  } catch (const ExportError& error) {
    outcome = {.end = ExportEnd::kFailed, .error = error.text};
  } catch (const ExportCancelled&) {
    outcome = {.end = ExportEnd::kCancelled, .error = {}};
  }
  return outcome;
}

}  // namespace qbx
