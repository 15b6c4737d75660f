// Measures how the rows of a results grid are written to files, and compares it with other programs.
//
//   export_bench [ROWS [ROUNDS]]    default: 100,000 rows of 27 columns, 5 rounds
//
// Prints medians. CSV is compared with the sqlite3 shell, which reads the same rows from a database in the same folder.
// The .xlsx workbook is compared with the library alone, called in a loop with prepared values. The .xls workbook has
// at most 65,535 rows. It is compared with LibreOffice, if that is installed, which converts a CSV file of the same
// rows.

#include <sys/resource.h>
#include <xlsxwriter.h>

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "exporting/export_file.h"
#include "support/rounds.h"

namespace {

using namespace qbx;
using namespace qbx::bench;

constexpr int kColumns = 27;
constexpr int kMostXlsRows = 65'535;
constexpr char kText[] = "12 Orchard Drive, Little Marden";

/// Columns as in the results: most of them text, then numbers, dates and flags.
class Rows : public RowSource {
 public:
  explicit Rows(int rows) : left_(rows) {
    for (int i = 0; i < kColumns; ++i)
      columns_.push_back({.name = QStringLiteral("Column_%1").arg(i), .type = TypeOf(i)});
  }
  static ValueType TypeOf(int column) {
    if (column < 15) return ValueType::kText;
    if (column < 19) return ValueType::kInt;
    return column < 23 ? ValueType::kDateTime : ValueType::kBool;
  }
  [[nodiscard]] const std::vector<Column>& Columns() const override { return columns_; }
  bool Next() override { return left_-- > 0; }
  [[nodiscard]] Cell At(int column) const override {
    const ValueType type = TypeOf(column);
    if (type == ValueType::kText)
      return {.type = type, .utf8 = std::string_view(kText).substr(0, 6 + static_cast<std::size_t>(column))};
    if (type == ValueType::kDateTime) return {.type = type, .integer = qint64{86'400'000} * 20'000, .utf8 = {}};
    return {.type = type, .integer = type == ValueType::kInt ? left_ : 1, .utf8 = {}};
  }

 private:
  std::vector<Column> columns_;
  int left_;
};

void BareWorkbook(const QString& path, int rows) {
  lxw_workbook_options options = {.constant_memory = LXW_TRUE, .tmpdir = nullptr, .use_zip64 = LXW_FALSE};
  lxw_workbook* book = workbook_new_opt(qPrintable(path), &options);
  lxw_worksheet* sheet = workbook_add_worksheet(book, nullptr);
  lxw_format* date = workbook_add_format(book);
  format_set_num_format(date, "dd/mm/yyyy");
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < 15; ++i)
    texts.emplace_back(kText, 6 + i);
  for (int i = 0; i < rows; ++i) {
    const auto row = static_cast<lxw_row_t>(i);
    for (lxw_col_t column = 0; column < kColumns; ++column) {
      if (column < 15)
        worksheet_write_string(sheet, row, column, texts[column].c_str(), nullptr);
      else if (column < 19)
        worksheet_write_number(sheet, row, column, rows - i, nullptr);
      else if (column < 23)
        worksheet_write_number(sheet, row, column, 45'569, date);
      else
        worksheet_write_boolean(sheet, row, column, 1, nullptr);
    }
  }
  if (workbook_close(book) != LXW_NO_ERROR) Fail("The bare workbook could not be written.");
}

void LibreOfficeWorkbook(const QTemporaryDir& folder, const QString& csv) {
  const QStringList arguments = {
      QLatin1String("-env:UserInstallation=file://") + folder.filePath(QStringLiteral("office")),
      QStringLiteral("--headless"),
      QStringLiteral("--norestore"),
      QStringLiteral("--infilter=CSV:44,34,76,1"),
      QStringLiteral("--convert-to"),
      QStringLiteral("xls:MS Excel 97"),
      QStringLiteral("--outdir"),
      folder.filePath(QStringLiteral("office-files")),
      csv};
  QProcess office;
  office.setStandardOutputFile(QProcess::nullDevice());
  office.start(QStringLiteral("soffice"), arguments);
  if (!office.waitForFinished(-1) || office.exitCode() != 0) Fail("LibreOffice made no workbook.");
}

ExportSheet SheetOf(const Recordset& rows) {
  ExportSheet sheet{.title = QStringLiteral("Bench"), .columns = {}, .rows = rows};
  for (int i = 0; i < kColumns; ++i)
    sheet.columns.push_back(MakeExportColumn(rows.Columns(), i, QStringLiteral("Column %1").arg(i)));
  return sheet;
}

long PeakKilobytes() {
  rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

}  // namespace

int main(int argc, char** argv) {
  const int count = argc > 1 ? std::max(1, std::atoi(argv[1])) : 100'000;
  const int rounds = argc > 2 ? std::max(1, std::atoi(argv[2])) : 5;
  const QTemporaryDir folder;
  const Recordset rows = Recordset::ReadAll(std::make_unique<Rows>(count));
  const Recordset fewRows = Recordset::ReadAll(std::make_unique<Rows>(std::min(count, kMostXlsRows)));
  const ExportSheet sheet = SheetOf(rows);
  const ExportSheet fewSheet = SheetOf(fewRows);
  const long before = PeakKilobytes();
  const auto ours = [&](ExportFormat format, const char* name) {
    return Milliseconds([&] {
      if (WriteExport(format == ExportFormat::kXls ? fewSheet : sheet, format, folder.filePath(QLatin1String(name)), {},
                      {})
              .end != ExportEnd::kDone)
        Fail("The export failed.");
    });
  };
  const auto shell = [&](const QStringList& arguments) {
    return Milliseconds([&] { QProcess::execute(QStringLiteral("sqlite3"), arguments); });
  };
  const QString database = folder.filePath(QStringLiteral("rows.db"));
  ours(ExportFormat::kCsv, "rows.csv");
  const long csvPeak = PeakKilobytes();
  ours(ExportFormat::kXls, "rows.xls");
  const long xlsPeak = PeakKilobytes();
  const bool hasOffice = !QStandardPaths::findExecutable(QStringLiteral("soffice")).isEmpty();
  const QString fewCsv = folder.filePath(QStringLiteral("few.csv"));
  if (WriteExport(fewSheet, ExportFormat::kCsv, fewCsv, {}, {}).end != ExportEnd::kDone) Fail("The export failed.");
  if (hasOffice) LibreOfficeWorkbook(folder, fewCsv);
  shell({database, QStringLiteral(".import --csv %1 t").arg(folder.filePath(QStringLiteral("rows.csv")))});
  std::vector<double> csv;
  std::vector<double> csvPeer;
  std::vector<double> xlsx;
  std::vector<double> xlsxPeer;
  std::vector<double> xls;
  std::vector<double> xlsPeer;
  long xlsxPeak = 0;
  for (int round = 0; round < rounds; ++round) {
    csv.push_back(ours(ExportFormat::kCsv, "rows.csv"));
    csvPeer.push_back(shell({database, QStringLiteral(".headers on"), QStringLiteral(".mode csv"),
                             QStringLiteral(".once %1").arg(folder.filePath(QStringLiteral("shell.csv"))),
                             QStringLiteral("select * from t")}));
    xlsx.push_back(ours(ExportFormat::kXlsx, "rows.xlsx"));
    if (xlsxPeak == 0) xlsxPeak = PeakKilobytes();
    xlsxPeer.push_back(Milliseconds([&] { BareWorkbook(folder.filePath(QStringLiteral("bare.xlsx")), count); }));
    xls.push_back(ours(ExportFormat::kXls, "rows.xls"));
    if (hasOffice) xlsPeer.push_back(Milliseconds([&] { LibreOfficeWorkbook(folder, fewCsv); }));
  }
  std::printf("CSV  %8.0f ms, sqlite3 shell %8.0f ms: %.2f x; peak %ld KB beyond the rows\n", Median(csv),
              Median(csvPeer), Median(csv) / Median(csvPeer), csvPeak - before);
  std::printf("XLSX %8.0f ms, library alone %8.0f ms: %.2f x; peak %ld KB beyond the rows\n", Median(xlsx),
              Median(xlsxPeer), Median(xlsx) / Median(xlsxPeer), xlsxPeak - before);
  std::printf("XLS  %8.0f ms of %lld rows; peak %ld KB beyond the rows\n", Median(xls),
              static_cast<long long>(fewSheet.RowCount()), xlsPeak - before);
  if (hasOffice) std::printf("     LibreOffice %8.0f ms: %.3f x\n", Median(xlsPeer), Median(xls) / Median(xlsPeer));
}
