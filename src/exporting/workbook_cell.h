// The cells of a sheet as a workbook takes them, whatever its format.

#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "exporting/export_sheet.h"

namespace qbx {

inline constexpr int kLongestCellText = 32'767;  ///< UTF-16 code units
inline constexpr char kWorkbookDate[] = "dd/mm/yyyy";
inline constexpr char kWorkbookDateTime[] = "dd/mm/yyyy hh:mm:ss";
inline constexpr quint8 kPaperA4 = 9;  ///< the number of the paper in workbooks
/// In inches. A sheet has many columns and is one page wide, so the margins are narrow.
inline constexpr struct {
  double side = 0.4;
  double end = 0.5;
  double header = 0.3;
} kPageMargins;
/// "0.00"
[[nodiscard]] std::string DecimalFormat(int decimals);

struct WorkbookCell {
  enum class Kind : quint8 { kEmpty, kInteger, kDecimal, kDate, kDateTime, kTick, kText };
  Kind kind = Kind::kEmpty;
  double number = 0;      ///< of all but a text; a date is the number of days that workbooks count
  std::string_view text;  ///< UTF-8 with a 0 behind it; valid until the next cell is asked for
  bool isCut = false;     ///< the text was longer than a cell takes
};

/// Reads cells of a sheet. A number that is not known is 0 and a tick unticked, as in the spreadsheet view; a date or text that is not known is an
/// empty cell. What a workbook cannot hold is text: whole numbers beyond 2^53, days before 1900 or after 9999. Line breaks of texts are LF, and what no workbook can hold is left out
/// of them.
class WorkbookCells {
 public:
  explicit WorkbookCells(const ExportSheet& sheet) : sheet_(sheet) {}

  [[nodiscard]] WorkbookCell At(qint64 row, const ExportColumn& column);
  [[nodiscard]] WorkbookCell Heading(const ExportColumn& column);

 private:
  WorkbookCell Text(std::string_view text);
  WorkbookCell Integer(qint64 number);
  WorkbookCell Date(const Cell& cell);

  const ExportSheet& sheet_;
  std::string text_;
};

/// The name of a sheet: "QBX Data - " and the title, without the characters that names of sheets must not have, 31 characters at most.
[[nodiscard]] QString SheetName(const QString& title);

}  // namespace qbx
