#include "exporting/xls_book.h"

#include "exporting/workbook_cell.h"

namespace qbx {

namespace {

constexpr quint16 kFirstOwnFormat = 164;  // smaller numbers are built in
constexpr quint16 kStyleLooks = 15;       // number of formats that precede those of cells in every workbook
constexpr quint16 kPlainFont = 0;
constexpr quint16 kBoldFont = 1;

void Font(BiffStream& out, quint16 weight) {
  constexpr quint16 kHeight = 200;  // twentieths of a point
  constexpr quint16 kAutomaticColour = 0x7FFF;
  constexpr quint8 kSwiss = 2;
  out.Begin(Biff::kFont).U16(kHeight).U16(0).U16(kAutomaticColour).U16(weight).U16(0);
  out.U8(0).U8(kSwiss).U8(0).U8(0).Short("Arial").End();
}

void Look(BiffStream& out, quint16 font, quint16 format, quint16 kind, quint8 ownParts) {
  constexpr quint8 kBottom = 0x20;
  constexpr quint16 kNoFill = 0x20C0;
  out.Begin(Biff::kXf).U16(font).U16(format).U16(kind).U8(kBottom).U8(0).U8(0).U8(ownParts);
  out.U32(0).U32(0).U16(kNoFill).End();
}

/// Collects number formats and cell formats and numbers them. All number formats are written before the cell formats,
/// so these are kept.
class LookList {
 public:
  explicit LookList(BiffStream& out) : out_(out) {}

  quint16 Add(quint16 font, quint16 format) {
    looks_.push_back({font, format});
    return static_cast<quint16>(kStyleLooks + looks_.size() - 1);
  }
  quint16 AddNumber(std::string_view format) {
    const auto number = static_cast<quint16>(kFirstOwnFormat + formats_++);
    out_.Begin(Biff::kFormat).U16(number).Long(format).End();
    return Add(kPlainFont, number);
  }
  void Write() {
    constexpr quint16 kStyle = 0xFFF5;  // locked, without a parent
    constexpr quint16 kCell = 0x0001;   // locked, a child of the first style
    constexpr quint8 kOwnFormat = 0x04;
    constexpr quint8 kOwnFont = 0x08;
    for (int i = 0; i < kStyleLooks; ++i)
      Look(out_, kPlainFont, 0, kStyle, 0);
    for (const auto& [font, format] : looks_)
      Look(out_, font, format, kCell, (format != 0 ? kOwnFormat : 0) | (font != kPlainFont ? kOwnFont : 0));
    constexpr quint16 kBuiltIn = 0x8000;
    constexpr quint8 kNormal = 0;
    out_.Begin(Biff::kStyle).U16(kBuiltIn).U8(kNormal).U8(0xFF).End();
  }

 private:
  struct Parts {
    quint16 font;
    quint16 format;
  };

  BiffStream& out_;
  int formats_ = 0;
  std::vector<Parts> looks_;
};

/// A built-in name of the first sheet for the rows from the first to `lastRow`.
void BuiltInName(BiffStream& out, quint8 name, bool hidden, qint64 lastRow, int lastColumn) {
  constexpr quint16 kBuiltIn = 0x20;
  constexpr quint8 kArea = 0x3B;
  constexpr quint16 kAreaBytes = 11;
  constexpr quint16 kFirstSheet = 1;
  out.Begin(Biff::kName).U16(kBuiltIn | (hidden ? 1 : 0)).U8(0).U8(1).U16(kAreaBytes).U16(0).U16(kFirstSheet).U32(0);
  out.U8(0).U8(name);
  out.U8(kArea).U16(0).U16(0).U16(static_cast<quint32>(lastRow)).U16(0).U16(static_cast<quint32>(lastColumn)).End();
}

}  // namespace

XlsLooks WriteXlsLooks(BiffStream& out, const std::vector<ExportColumn>& columns) {
  constexpr quint16 kNormal = 400;
  constexpr quint16 kBold = 700;
  for (const quint16 weight : {kNormal, kBold, kNormal, kNormal})  // a workbook has at least four fonts
    Font(out, weight);
  LookList list(out);
  XlsLooks looks;
  looks.plain = list.Add(kPlainFont, 0);
  looks.heading = list.Add(kBoldFont, 0);
  looks.date = list.AddNumber(kWorkbookDate);
  looks.dateTime = list.AddNumber(kWorkbookDateTime);
  for (const ExportColumn& column : columns)
    looks.decimals.push_back(column.decimals > 0 ? list.AddNumber(DecimalFormat(column.decimals)) : looks.plain);
  list.Write();
  return looks;
}

qint64 WriteXlsSheetName(BiffStream& out, const QString& title) {
  out.Begin(Biff::kBoundSheet);
  const qint64 place = out.Position();
  out.U32(0).U16(0).Short(SheetName(title).toStdString()).End();
  return place;
}

void WriteXlsHeadingNames(BiffStream& out, qint64 rows, int columns) {
  constexpr quint16 kThisBook = 0x0401;
  constexpr quint8 kPrintTitles = 0x07;
  constexpr quint8 kFilterDatabase = 0x0D;
  constexpr int kLastColumn = 255;
  out.Begin(Biff::kSupBook).U16(1).U16(kThisBook).End();
  out.Begin(Biff::kExternSheet).U16(1).U16(0).U16(0).U16(0).End();
  BuiltInName(out, kFilterDatabase, true, rows, columns - 1);
  BuiltInName(out, kPrintTitles, false, 0, kLastColumn);
}

}  // namespace qbx
