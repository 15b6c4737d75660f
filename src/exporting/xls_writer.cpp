// Workbooks in the .xls format (BIFF8 in a compound file). Texts precede cells, so the rows are read twice and none is
// kept.

#include <cmath>

#include "exporting/export_parts.h"
#include "exporting/workbook_cell.h"
#include "exporting/xls_book.h"
#include "exporting/xls_texts.h"

namespace qbx {

namespace {

constexpr int kPasses = 2;

void BeginPart(BiffStream& out, quint16 kind) {
  out.Begin(Biff::kBof).U16(0x0600).U16(kind).U16(0x0DBB).U16(0x07CC).U32(0x41).U32(6).End();
}

class XlsFile {
 public:
  XlsFile(const ExportSheet& sheet, QIODevice& file, bool headings, const ExportProgress& progress)
      : sheet_(sheet),
        headings_(headings && !sheet.columns.empty()),
        columns_(static_cast<int>(sheet.columns.size())),
        steps_(progress, kPasses),
        file_(file, QStringLiteral("Workbook")),
        out_(file_) {}

  /// \return how many texts were cut
  qint64 Write() {
    WriteBook();
    WriteSheet();
    out_.Flush();
    file_.Finish();
    steps_.Tell(passed_);
    return cutTexts_;
  }

 private:
  void WriteBook() {
    constexpr quint16 kBook = 0x05;
    constexpr quint16 kUtf16 = 1200;
    BeginPart(out_, kBook);
    out_.Begin(Biff::kCodePage).U16(kUtf16).End();
    // Position and size of the window, tabs and scroll bars visible, first sheet of one, width of the tabs.
    out_.Begin(Biff::kWindow1).U16(0).U16(0).U16(0x4000).U16(0x2000).U16(0x38).U16(0).U16(0).U16(1).U16(600).End();
    out_.Begin(Biff::kDateMode).U16(0).End();  // days count from 1900
    out_.Begin(Biff::kPrecision).U16(1).End();
    looks_ = WriteXlsLooks(out_, sheet_.columns);
    sheetPlace_ = WriteXlsSheetName(out_, sheet_.title);
    constexpr quint16 kUnitedKingdom = 44;
    out_.Begin(Biff::kCountry).U16(kUnitedKingdom).U16(kUnitedKingdom).End();
    if (headings_) {
      WriteXlsHeadingNames(out_, sheet_.RowCount(), columns_);
      WriteXlsButtonCount(out_, columns_);
    }
    WriteTexts();
    out_.Begin(Biff::kEof).End();
  }

  void WriteTexts() {
    TextTable table(out_);
    EachCell([&](quint32, std::size_t, quint16, const WorkbookCell& cell) {
      if (cell.kind == WorkbookCell::Kind::kText) table.Add(cell.text);
      if (cell.isCut) ++cutTexts_;
    });
    table.Finish();
  }

  void WriteSheet() {
    constexpr quint16 kSheet = 0x10;
    out_.Replace(sheetPlace_, static_cast<quint32>(out_.Position()));
    BeginPart(out_, kSheet);
    SetUpPage();
    SetUpColumns();
    const auto rows = static_cast<quint32>(sheet_.RowCount() + (headings_ ? 1 : 0));
    out_.Begin(Biff::kDimensions).U32(0).U32(rows).U16(0).U16(static_cast<quint32>(columns_)).U16(0).End();
    TextNumbers numbers;
    EachCell([&](quint32 row, std::size_t column, quint16 look, const WorkbookCell& cell) {
      WriteCell(row, static_cast<quint32>(column), look, cell, numbers);
    });
    if (headings_) WriteXlsButtons(out_, columns_);
    SetUpWindow();
    out_.Begin(Biff::kEof).End();
  }

  /// Calls `use` for the headings and all rows.
  template <typename Use>
  void EachCell(Use use) {
    quint32 row = 0;
    if (headings_) {
      for (std::size_t i = 0; i < sheet_.columns.size(); ++i)
        use(row, i, looks_.heading, cells_.Heading(sheet_.columns[i]));
      ++row;
    }
    const qint64 rows = sheet_.RowCount();
    for (qint64 from = 0; from < rows; ++from, ++row) {
      for (std::size_t i = 0; i < sheet_.columns.size(); ++i) {
        const WorkbookCell cell = cells_.At(from, sheet_.columns[i]);
        use(row, i, LookOf(i, cell.kind), cell);
      }
      steps_.Done(++passed_);
    }
  }

  [[nodiscard]] quint16 LookOf(std::size_t column, WorkbookCell::Kind kind) const {
    switch (kind) {
      case WorkbookCell::Kind::kDecimal:
        return looks_.decimals[column];
      case WorkbookCell::Kind::kDate:
        return looks_.date;
      case WorkbookCell::Kind::kDateTime:
        return looks_.dateTime;
      default:
        return looks_.plain;
    }
  }

  void WriteCell(quint32 row, quint32 column, quint16 look, const WorkbookCell& cell, TextNumbers& numbers) {
    switch (cell.kind) {
      case WorkbookCell::Kind::kEmpty:
        return;
      case WorkbookCell::Kind::kText:
        return out_.Begin(Biff::kLabelSst).U16(row).U16(column).U16(look).U32(numbers.Of(cell.text).number).End();
      case WorkbookCell::Kind::kTick:
        return out_.Begin(Biff::kBoolErr).U16(row).U16(column).U16(look).U8(cell.number != 0 ? 1 : 0).U8(0).End();
      default:
        break;
    }
    // Whole numbers of 30 bits have a shorter record; its lowest bits mark them.
    constexpr double kMostShort = 0x1FFF'FFFF;
    constexpr qint32 kWhole = 2;
    if (std::abs(cell.number) <= kMostShort && cell.number == std::trunc(cell.number)) {
      const auto number = static_cast<quint32>(static_cast<qint32>(cell.number) * 4 + kWhole);
      out_.Begin(Biff::kRk).U16(row).U16(column).U16(look).U32(number).End();
    } else {
      out_.Begin(Biff::kNumber).U16(row).U16(column).U16(look).Double(cell.number).End();
    }
  }

  void SetUpPage() {
    constexpr quint16 kAsUsual = 0x04C1;
    constexpr quint16 kFitToPages = 0x0100;
    out_.Begin(Biff::kCalcMode).U16(1).End();
    out_.Begin(Biff::kCalcCount).U16(100).End();
    out_.Begin(Biff::kDefaultRowHeight).U16(0).U16(0xFF).End();
    out_.Begin(Biff::kWsBool).U16(kAsUsual | kFitToPages).End();
    out_.Begin(Biff::kHeader).End();
    out_.Begin(Biff::kFooter).End();
    out_.Begin(Biff::kLeftMargin).Double(kPageMargins.side).End();
    out_.Begin(Biff::kRightMargin).Double(kPageMargins.side).End();
    out_.Begin(Biff::kTopMargin).Double(kPageMargins.end).End();
    out_.Begin(Biff::kBottomMargin).Double(kPageMargins.end).End();
    // Scale in percent, first page, one page wide, any number of pages high, landscape, dots per inch.
    out_.Begin(Biff::kSetup).U16(kPaperA4).U16(100).U16(1).U16(1).U16(0).U16(0).U16(600).U16(600);
    out_.Double(kPageMargins.header).Double(kPageMargins.header).U16(1).End();
  }

  void SetUpColumns() {
    out_.Begin(Biff::kDefColWidth).U16(8).End();
    for (std::size_t i = 0; i < sheet_.columns.size(); ++i) {
      const auto place = static_cast<quint32>(i);
      // In 256ths of a digit of 7 pixels, with 5 pixels around the text.
      const auto width = static_cast<quint32>((sheet_.columns[i].width * 7 + 5) * 256 / 7);
      out_.Begin(Biff::kColInfo).U16(place).U16(place).U16(width).U16(looks_.plain).U16(0).U16(0).End();
    }
    if (headings_) out_.Begin(Biff::kAutoFilterInfo).U16(static_cast<quint32>(columns_)).End();
  }

  void SetUpWindow() {
    constexpr quint16 kAsUsual = 0x06B6;
    constexpr quint16 kFrozen = 0x0108;
    constexpr quint16 kGridColour = 64;
    constexpr quint8 kLowerPane = 2;
    constexpr quint8 kOnlyPane = 3;
    out_.Begin(Biff::kWindow2).U16(headings_ ? kAsUsual | kFrozen : kAsUsual).U16(0).U16(0).U32(kGridColour);
    out_.Zeros(8).End();
    if (headings_) out_.Begin(Biff::kPane).U16(0).U16(1).U16(1).U16(0).U16(kLowerPane).End();
    const quint32 row = headings_ ? 1 : 0;
    out_.Begin(Biff::kSelection).U8(headings_ ? kLowerPane : kOnlyPane).U16(row).U16(0).U16(0).U16(1);
    out_.U16(row).U16(row).U8(0).U8(0).End();
  }

  const ExportSheet& sheet_;
  WorkbookCells cells_{sheet_};
  bool headings_;
  int columns_;
  ProgressSteps steps_;
  CompoundFile file_;
  BiffStream out_;
  XlsLooks looks_;
  qint64 sheetPlace_ = 0;
  qint64 passed_ = 0;  // number of rows read, all passes together
  qint64 cutTexts_ = 0;
};

}  // namespace

qint64 WriteXls(const ExportSheet& sheet, QIODevice& file, const ExportOptions& options,
                const ExportProgress& progress) {
  return XlsFile(sheet, file, options.headings, progress).Write();
}

}  // namespace qbx
