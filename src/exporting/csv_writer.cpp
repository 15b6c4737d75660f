// CSV. Every cell is in quotes, so that no text can end its cell. UTF-8 with a byte-order mark, which tells spreadsheet
// programs that the file is not in a Windows code page.

#include <charconv>

#include "exporting/cell_date.h"
#include "exporting/export_parts.h"
#include "util/text.h"

namespace qbx {

namespace {

constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";

class CsvFile {
 public:
  CsvFile(QIODevice& file, bool formulaSafe) : file_(file), formulaSafe_(formulaSafe) {
    buffer_.reserve(kFlushedBytes + kFlushedBytes / 4);
    buffer_ += kByteOrderMark;
  }

  void Text(std::string_view text) {
    Open();
    if (formulaSafe_ && LooksLikeFormula(text)) buffer_ += '\'';
    AppendDoubled(text);
    buffer_ += '"';
  }

  void Add(const Cell& cell) {
    if (cell.type == ValueType::kText) return Text(cell.utf8);
    Open();
    switch (cell.type) {
      case ValueType::kNull:
        break;
      case ValueType::kBool:
        buffer_ += cell.integer != 0 ? '1' : '0';
        break;
      case ValueType::kInt:
        Number(cell.integer);
        break;
      case ValueType::kDateTime:
        Date(DateOf(cell));
        break;
      case ValueType::kDecimal:
        Decimal(cell);
        break;
      default:
        buffer_ += ShortestNumber(cell.real).toStdString();
    }
    buffer_ += '"';
  }

  void EndRow() {
    buffer_ += "\r\n";
    inRow_ = false;
    if (buffer_.size() >= kFlushedBytes) Flush();
  }

  void Flush() {
    WriteAll(file_, buffer_.data(), static_cast<qint64>(buffer_.size()));
    buffer_.clear();
  }

 private:
  void Open() {
    buffer_ += inRow_ ? ",\"" : "\"";
    inRow_ = true;
  }

  static bool LooksLikeFormula(std::string_view text) {
    if (text.empty()) return false;
    const char first = text.front();
    if (first == '=' || first == '@' || first == '\t') return true;
    if (first != '+' && first != '-') return false;
    return text.size() < 2 || text[1] < '0' || text[1] > '9';
  }

  void AppendDoubled(std::string_view text) {
    for (std::size_t quote = text.find('"'); quote != std::string_view::npos; quote = text.find('"')) {
      buffer_.append(text.substr(0, quote + 1)) += '"';
      text.remove_prefix(quote + 1);
    }
    buffer_.append(text);
  }

  void Number(qint64 number) {
    char digits[24];
    buffer_.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
  }

  void Decimal(const Cell& cell) {
    if (cell.integer < 0) buffer_ += '-';
    std::string digits = std::to_string(cell.integer).substr(cell.integer < 0 ? 1 : 0);
    if (digits.size() <= cell.scale) digits.insert(0, cell.scale + std::size_t{1} - digits.size(), '0');
    if (cell.scale > 0) digits.insert(digits.size() - cell.scale, 1, '.');
    buffer_ += digits;
  }

  void Digits(int number, int digits) {
    const std::size_t end = buffer_.size() + static_cast<std::size_t>(digits);
    buffer_.resize(end);
    for (std::size_t i = end; digits > 0; --digits, number /= 10)
      buffer_[--i] = static_cast<char>('0' + number % 10);
  }

  void Date(const CellDate& date) {
    Digits(date.day.day(), 2);
    buffer_ += '/';
    Digits(date.day.month(), 2);
    buffer_ += '/';
    Digits(date.day.year(), 4);
    if (date.milliseconds == 0) return;
    const int seconds = date.milliseconds / 1000;
    buffer_ += ' ';
    Digits(seconds / 3600, 2);
    buffer_ += ':';
    Digits(seconds / 60 % 60, 2);
    buffer_ += ':';
    Digits(seconds % 60, 2);
  }

  QIODevice& file_;
  bool formulaSafe_;
  bool inRow_ = false;
  std::string buffer_;
};

}  // namespace

void WriteCsv(const ExportSheet& sheet, QIODevice& file, const ExportOptions& options, const ExportProgress& progress) {
  CsvFile csv(file, options.formulaSafe);
  const ProgressSteps steps(progress);
  if (options.headings) {
    for (const ExportColumn& column : sheet.columns)
      csv.Text(column.heading.toStdString());
    csv.EndRow();
  }
  const qint64 rows = sheet.RowCount();
  for (qint64 row = 0; row < rows; ++row) {
    for (const ExportColumn& column : sheet.columns)
      csv.Add(sheet.At(row, column));
    csv.EndRow();
    steps.Done(row + 1);
  }
  csv.Flush();
  steps.Tell(rows);
}

}  // namespace qbx
