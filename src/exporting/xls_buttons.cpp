// The filter buttons of an .xls sheet. Each is a shape of the drawing layer, which the office programs share, and an
// object of the sheet.

#include "exporting/xls_book.h"

namespace qbx {

namespace {

// Types of the drawing layer's records, with its own names.
constexpr quint16 kDggContainer = 0xF000;
constexpr quint16 kDgContainer = 0xF002;
constexpr quint16 kSpgrContainer = 0xF003;
constexpr quint16 kSpContainer = 0xF004;
constexpr quint16 kDgg = 0xF006;
constexpr quint16 kDg = 0xF008;
constexpr quint16 kSpgr = 0xF009;
constexpr quint16 kSp = 0xF00A;
constexpr quint16 kOpt = 0xF00B;
constexpr quint16 kClientAnchor = 0xF010;
constexpr quint16 kClientData = 0xF011;

constexpr quint32 kDrawingHead = 8;
constexpr quint32 kGroupBytes = 48;   // the shape that groups all others
constexpr quint32 kButtonBytes = 96;  // with the header
constexpr quint32 kFirstShape = 1024;

BiffStream& Head(BiffStream& out, quint16 kind, quint32 bytes, quint16 version = 0, quint16 instance = 0) {
  return out.U16(static_cast<quint32>(instance << 4 | version)).U16(kind).U32(bytes);
}

BiffStream& Container(BiffStream& out, quint16 kind, quint32 bytes) {
  return Head(out, kind, bytes, 0xF);
}

void Group(BiffStream& out, quint32 buttons) {
  const quint32 shapesBytes = kGroupBytes + buttons * kButtonBytes;
  Container(out, kDgContainer, 2 * kDrawingHead + kDrawingHead + shapesBytes);
  Head(out, kDg, 8, 0, 1).U32(buttons + 1).U32(kFirstShape + buttons);
  Container(out, kSpgrContainer, shapesBytes);
  Container(out, kSpContainer, kGroupBytes - kDrawingHead);
  Head(out, kSpgr, 16, 1).Zeros(16);
  constexpr quint32 kIsGroup = 0x5;
  Head(out, kSp, 8, 2).U32(kFirstShape).U32(kIsGroup);
}

void ButtonShape(BiffStream& out, quint32 column) {
  constexpr quint16 kHostControl = 201;
  constexpr quint32 kAnchored = 0xA00;
  Container(out, kSpContainer, kButtonBytes - kDrawingHead);
  Head(out, kSp, 8, 2, kHostControl).U32(kFirstShape + 1 + column).U32(kAnchored);
  Head(out, kOpt, 30, 3, 5);
  out.U16(0x007F).U32(0x01040104);  // locked
  out.U16(0x00BF).U32(0x00080008);  // fitted to its text
  out.U16(0x01BF).U32(0x00010000);  // no filling
  out.U16(0x01FF).U32(0x00080000);  // no line
  out.U16(0x03BF).U32(0x000A0000);  // not printed
  Head(out, kClientAnchor, 18).U16(1).U16(column).U16(0).U16(0).U16(0).U16(column + 1).U16(0).U16(1).U16(0);
  Head(out, kClientData, 0);
}

/// A drop-down list that belongs to the filter; programs fill it themselves.
void ButtonObject(BiffStream& out, quint32 column) {
  constexpr quint16 kDropDown = 0x14;
  constexpr quint16 kOfFilter = 0x2101;
  out.Begin(Biff::kObj);
  out.U16(0x15).U16(18).U16(kDropDown).U16(column + 1).U16(kOfFilter).Zeros(12);
  out.U16(0x0C).U16(20).Zeros(8).U16(100).U16(1).U16(10).U16(0).U16(16).U16(1);  // its scroll bar
  constexpr quint16 kListSize = 0x1FEE;  // the value that the format prescribes for a list without lines
  out.U16(0x13).U16(kListSize).U32(0).U16(1).U16(0x0301).U16(0).U16(2).U16(8).U16(0x57);
  out.U32(0).End();
}

}  // namespace

void WriteXlsButtonCount(BiffStream& out, int columns) {
  const auto shapes = static_cast<quint32>(columns) + 1;
  out.Begin(Biff::kMsoDrawingGroup);
  Container(out, kDggContainer, kDrawingHead + 24);
  Head(out, kDgg, 24).U32(kFirstShape + shapes).U32(2).U32(shapes).U32(1).U32(1).U32(shapes);
  out.End();
}

void WriteXlsButtons(BiffStream& out, int columns) {
  for (quint32 column = 0; column < static_cast<quint32>(columns); ++column) {
    out.Begin(Biff::kMsoDrawing);
    if (column == 0) Group(out, static_cast<quint32>(columns));
    ButtonShape(out, column);
    out.End();
    ButtonObject(out, column);
  }
}

}  // namespace qbx
