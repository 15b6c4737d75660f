// Workbooks in the .xlsx format. A row is dropped from memory when the next one begins.

#include <xlsxwriter.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "exporting/export_parts.h"
#include "exporting/workbook_cell.h"
#include "exporting/zip_directory.h"
#include "util/text.h"

namespace qbx {

namespace {

void Must(lxw_error error) {
  if (error != LXW_NO_ERROR) throw ExportError{QString::fromLatin1(lxw_strerror(error))};
}

/// Throws when the library failed. The system's own error text says more than the library's.
void MustWrite(lxw_error error) {
  if (error != LXW_NO_ERROR && errno != 0) throw ExportError{QString::fromLocal8Bit(std::strerror(errno))};
  Must(error);
}

lxw_col_t Place(std::size_t column) {
  return static_cast<lxw_col_t>(column);
}

/// In this format "_x0041_" stands for a character. In a text that holds exactly this, the "_" is escaped.
QString Escaped(const QString& text) {
  static const QRegularExpression escape(QStringLiteral("_(?=x[0-9A-Fa-f]{4}_)"));
  return QString(text).replace(escape, QStringLiteral("_x005F_"));
}

class XlsxFile {
 public:
  XlsxFile(const ExportSheet& sheet, const QString& path) : sheet_(sheet), path_(path), cells_(sheet) {
    QByteArray folder = QFile::encodeName(QDir::tempPath());
    lxw_workbook_options options = {.constant_memory = LXW_TRUE, .tmpdir = folder.data(), .use_zip64 = LXW_FALSE};
    book_ = workbook_new_opt(QFile::encodeName(path).constData(), &options);
    if (book_ != nullptr) page_ = workbook_add_worksheet(book_, SheetName(sheet.title).toUtf8().constData());
    if (page_ == nullptr) {
      GiveUp();
      throw ExportError{QStringLiteral("The workbook could not be made in the folder for temporary files.")};
    }
    MakeFormats();
  }
  ~XlsxFile() { GiveUp(); }
  XlsxFile(const XlsxFile&) = delete;
  XlsxFile& operator=(const XlsxFile&) = delete;

  void SetUpPage(bool headings) {
    for (std::size_t i = 0; i < sheet_.columns.size(); ++i)
      Must(worksheet_set_column(page_, Place(i), Place(i), sheet_.columns[i].width, nullptr));
    worksheet_set_landscape(page_);
    worksheet_set_paper(page_, kPaperA4);
    worksheet_fit_to_pages(page_, 1, 0);
    worksheet_set_margins(page_, kPageMargins.side, kPageMargins.side, kPageMargins.end, kPageMargins.end);
    if (!headings || sheet_.columns.empty()) return;
    worksheet_freeze_panes(page_, 1, 0);
    Must(worksheet_repeat_rows(page_, 0, 0));
    Must(
        worksheet_autofilter(page_, 0, 0, static_cast<lxw_row_t>(sheet_.RowCount()), Place(sheet_.columns.size() - 1)));
    for (std::size_t i = 0; i < sheet_.columns.size(); ++i)
      Must(WriteText(Place(i), cells_.Heading(sheet_.columns[i]), heading_));
    next_ = 1;
  }

  void AddRow(qint64 row) {
    for (std::size_t i = 0; i < sheet_.columns.size(); ++i)
      Must(Write(Place(i), i, cells_.At(row, sheet_.columns[i])));
    ++next_;
  }

  /// \return how many texts were cut
  qint64 Finish() {
    const qint64 rowsBytes = FlushRows();
    errno = 0;
    MustWrite(workbook_close(std::exchange(book_, nullptr)));
    // The library copies the rows to a second temporary file and does not check whether all of them were written.
    constexpr qint64 kLeastAround = 512;  // bytes of the sheet beside its rows
    QFile written(path_);
    if (!written.open(QIODevice::ReadOnly) ||
        UnpackedSize(written, "xl/worksheets/sheet1.xml") < rowsBytes + kLeastAround)
      throw ExportError{QStringLiteral("The folder for temporary files did not take the whole workbook.")};
    return cutTexts_;
  }

 private:
  /// Checks what the library does not: whether its temporary file holds all rows. \return its size
  [[nodiscard]] qint64 FlushRows() {
    FILE* rows = page_->optimize_tmpfile;
    if (rows == nullptr) return 0;
    errno = 0;
    lxw_worksheet_write_single_row(page_);
    if (std::fflush(rows) != 0 || std::ferror(rows) != 0) MustWrite(LXW_ERROR_CREATING_TMPFILE);
    return std::ftell(rows);
  }

  lxw_error Write(lxw_col_t place, std::size_t column, const WorkbookCell& cell) {
    switch (cell.kind) {
      case WorkbookCell::Kind::kEmpty:
        return LXW_NO_ERROR;
      case WorkbookCell::Kind::kInteger:
        return worksheet_write_number(page_, next_, place, cell.number, nullptr);
      case WorkbookCell::Kind::kDecimal:
        return worksheet_write_number(page_, next_, place, cell.number, decimals_[column]);
      case WorkbookCell::Kind::kDate:
        return worksheet_write_number(page_, next_, place, cell.number, date_);
      case WorkbookCell::Kind::kDateTime:
        return worksheet_write_number(page_, next_, place, cell.number, dateTime_);
      case WorkbookCell::Kind::kTick:
        return worksheet_write_boolean(page_, next_, place, cell.number != 0 ? 1 : 0, nullptr);
      case WorkbookCell::Kind::kText:
        break;
    }
    return WriteText(place, cell, nullptr);
  }

  lxw_error WriteText(lxw_col_t place, const WorkbookCell& cell, lxw_format* format) {
    if (cell.kind == WorkbookCell::Kind::kEmpty) return LXW_NO_ERROR;
    bool isCut = cell.isCut;
    std::string escaped;
    if (cell.text.find("_x") != std::string_view::npos) {
      const QString text = QString::fromUtf8(cell.text.data(), static_cast<qsizetype>(cell.text.size()));
      const auto excess = static_cast<int>(Escaped(text).size()) - kLongestCellText;
      isCut = isCut || excess > 0;
      escaped = Escaped(CutText(text, static_cast<int>(text.size()) - std::max(excess, 0))).toStdString();
    }
    if (isCut) ++cutTexts_;
    return worksheet_write_string(page_, next_, place, escaped.empty() ? cell.text.data() : escaped.c_str(), format);
  }

  lxw_format* NumberFormat(const char* format) {
    lxw_format* made = workbook_add_format(book_);
    format_set_num_format(made, format);
    return made;
  }

  void MakeFormats() {
    heading_ = workbook_add_format(book_);
    format_set_bold(heading_);
    date_ = NumberFormat(kWorkbookDate);
    dateTime_ = NumberFormat(kWorkbookDateTime);
    for (const ExportColumn& column : sheet_.columns)
      decimals_.push_back(column.decimals > 0 ? NumberFormat(DecimalFormat(column.decimals).c_str()) : nullptr);
  }

  /// Closes the rows' file, which the library closes only when it makes the workbook.
  void GiveUp() {
    if (book_ == nullptr) return;
    FILE* rows = page_ != nullptr ? std::exchange(page_->optimize_tmpfile, nullptr) : nullptr;
    if (rows != nullptr) std::fclose(rows);
    lxw_workbook_free(std::exchange(book_, nullptr));
  }

  const ExportSheet& sheet_;
  QString path_;
  WorkbookCells cells_;
  lxw_workbook* book_ = nullptr;
  lxw_worksheet* page_ = nullptr;
  lxw_format* heading_ = nullptr;
  lxw_format* date_ = nullptr;
  lxw_format* dateTime_ = nullptr;
  std::vector<lxw_format*> decimals_;  // by column
  lxw_row_t next_ = 0;
  qint64 cutTexts_ = 0;
};

}  // namespace

qint64 WriteXlsx(const ExportSheet& sheet, const QString& path, const ExportOptions& options,
                 const ExportProgress& progress) {
  XlsxFile file(sheet, path);
  const ProgressSteps steps(progress);
  file.SetUpPage(options.headings);
  const qint64 rows = sheet.RowCount();
  for (qint64 row = 0; row < rows; ++row) {
    file.AddRow(row);
    steps.Done(row + 1);
  }
  const qint64 cut = file.Finish();
  steps.Tell(rows);
  return cut;
}

}  // namespace qbx
