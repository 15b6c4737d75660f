#include "platform/ui/edit_drawings.h"

#include <QFont>

namespace qbx {
namespace {

void Line(QPainterPath& path, double x1, double y1, double x2, double y2) {
  path.moveTo(x1, y1);
  path.lineTo(x2, y2);
}

/// A letter in the middle of the square.
void Character(QPainterPath& path, char16_t letter, bool bold, bool italic) {
  QFont font(QStringLiteral("serif"));
  font.setPixelSize(17);
  font.setBold(bold);
  font.setItalic(italic);
  QPainterPath glyph;
  glyph.addText(0, 0, font, QString(QChar(letter)));
  path.addPath(glyph.translated(QPointF(12, 11) - glyph.boundingRect().center()));
}

/// Lines of text, of which every second has its own length.
void Paragraph(QPainterPath& path, double left, double right) {
  for (const double y : {5.0, 14.0})
    Line(path, 4, y, 20, y);
  for (const double y : {9.5, 18.5})
    Line(path, left, y, right, y);
}

void Scissors(QPainterPath& path) {
  path.addEllipse(QPointF(7, 18), 2.6, 2.6);
  path.addEllipse(QPointF(17, 18), 2.6, 2.6);
  Line(path, 8.5, 15.8, 16, 3.5);
  Line(path, 15.5, 15.8, 8, 3.5);
}

void Clipboard(QPainterPath& path) {
  path.addRoundedRect(5, 5, 14, 16, 1.5, 1.5);
  path.addRoundedRect(9, 3, 6, 4, 1, 1);
  Line(path, 8.5, 12, 15.5, 12);
  Line(path, 8.5, 16, 15.5, 16);
}

void TwoSheets(QPainterPath& path) {
  path.addRoundedRect(8, 8, 12, 13, 1.5, 1.5);
  path.moveTo(16, 8);
  path.lineTo(16, 3.5);
  path.lineTo(4, 3.5);
  path.lineTo(4, 16.5);
  path.lineTo(8, 16.5);
}

void Bullets(QPainterPath& path) {
  for (const double y : {6.0, 12.0, 18.0}) {
    path.addEllipse(QPointF(5, y), 1.2, 1.2);
    Line(path, 9.5, y, 20, y);
  }
}

void Palette(QPainterPath& path) {
  Character(path, u'A', false, false);
  path.addRect(4, 19.5, 16, 2);
}

/// \param side  -1: back, 1: forth
void Turn(QPainterPath& path, double side) {
  const auto x = [side](double off) { return 12 + side * off; };
  path.moveTo(x(-6), 19);
  path.cubicTo(x(-10), 11, x(-2), 7, x(7), 9);
  path.moveTo(x(3), 4.5);
  path.lineTo(x(7.5), 9);
  path.lineTo(x(3), 13.5);
}

void Magnifier(QPainterPath& path) {
  path.addEllipse(QPointF(10, 10), 6, 6);
  Line(path, 14.5, 14.5, 20.5, 20.5);
}

void BrokenPage(QPainterPath& path) {
  path.moveTo(5, 9);
  path.lineTo(5, 3);
  path.lineTo(19, 3);
  path.lineTo(19, 9);
  path.moveTo(5, 15);
  path.lineTo(5, 21);
  path.lineTo(19, 21);
  path.lineTo(19, 15);
  for (const double left : {3.0, 8.5, 14.0})
    Line(path, left, 12, left + 3, 12);
  Line(path, 19.5, 12, 21, 12);
}

}  // namespace

void DrawEditing(Drawing drawing, QPainterPath& path) {
  switch (drawing) {
    case Drawing::kCut:
      return Scissors(path);
    case Drawing::kCopy:
      return TwoSheets(path);
    case Drawing::kPaste:
      return Clipboard(path);
    case Drawing::kBold:
      return Character(path, u'B', true, false);
    case Drawing::kItalic:
      return Character(path, u'I', false, true);
    case Drawing::kUnderline:
      Character(path, u'U', false, false);
      return Line(path, 5, 20.5, 19, 20.5);
    case Drawing::kAlignLeft:
      return Paragraph(path, 4, 14);
    case Drawing::kAlignCentre:
      return Paragraph(path, 7, 17);
    case Drawing::kAlignRight:
      return Paragraph(path, 10, 20);
    case Drawing::kBullets:
      return Bullets(path);
    case Drawing::kColour:
      return Palette(path);
    case Drawing::kUndo:
      return Turn(path, -1);
    case Drawing::kRedo:
      return Turn(path, 1);
    case Drawing::kFind:
      return Magnifier(path);
    case Drawing::kPageBreak:
      return BrokenPage(path);
    default:
      return;
  }
}

}  // namespace qbx
