// The cells of a sheet as workbooks of both formats store them.

#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "exporting/export_sheet.h"

namespace qbx {

inline constexpr int kLongestCellText = 32'767;  ///< UTF-16 code units
inline constexpr char kWorkbookDate[] = "dd/mm/yyyy";
inline constexpr char kWorkbookDateTime[] = "dd/mm/yyyy hh:mm:ss";
inline constexpr quint8 kPaperA4 = 9;  ///< the number of A4 paper in workbooks
/// Margins in inches. They are narrow because a sheet has many columns on a page.
inline constexpr struct {
  double side = 0.4;
  double end = 0.5;
  double header = 0.3;
} kPageMargins;
/// A number format such as "0.00".
[[nodiscard]] std::string DecimalFormat(int decimals);

struct WorkbookCell {
  enum class Kind : quint8 { kEmpty, kInteger, kDecimal, kDate, kDateTime, kTick, kText };
  Kind kind = Kind::kEmpty;
  double number = 0;      ///< of every cell but a text; a date is the day number of workbooks
  std::string_view text;  ///< UTF-8, ends with a 0; valid until the next call
  bool isCut = false;     ///< whether the text was too long for a cell
};

/// Reads cells of a sheet. As in the spreadsheet view, an unknown number is 0 and an unknown tick is off; an unknown
/// date or text is an empty cell. Values that a workbook cannot store become texts: whole numbers beyond 2^53 and days
/// before 1900 or after 9999. Line breaks of texts are LF. Characters that no workbook can hold are left out.
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

/// The name of a sheet: "QBX Data - " and the title, without characters that such names must not have, at most 31
/// characters.
[[nodiscard]] QString SheetName(const QString& title);

}  // namespace qbx
