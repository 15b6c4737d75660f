#include "rtf/looks.h"

#include <QTextDocument>
#include <QTextList>
#include <algorithm>
#include <array>
#include <cmath>

namespace qbx {
namespace {

int Twips(double pixels, int most = kMaxTwips) {
  return std::clamp(static_cast<int>(std::lround(std::clamp(pixels * kTwipsAPixel, -1e6, 1e6))), -most, most);
}

QByteArray Word(const char* name, int number) {
  return QByteArray("\\") + name + QByteArray::number(number);
}

QByteArray WordUnless0(const char* name, int number) {
  return number == 0 ? QByteArray() : Word(name, number);
}

int HalfPoints(const QFont& font) {
  const double points = font.pointSizeF() > 0 ? font.pointSizeF() : font.pixelSize() * 0.75;
  return std::clamp(static_cast<int>(std::lround(points * 2)), 1, kMaxFontHalfPoints);
}

void SetSpacing(RtfParagraph& look, const QTextBlockFormat& format) {
  switch (format.lineHeightType()) {
    case QTextBlockFormat::ProportionalHeight:
      look.spacing = static_cast<int>(std::lround(std::clamp(format.lineHeight(), 0.0, 1000.0) * 2.4));
      look.spacingMultiple = 1;
      break;
    case QTextBlockFormat::FixedHeight:
      look.spacing = -Twips(format.lineHeight());
      break;
    case QTextBlockFormat::MinimumHeight:
      look.spacing = Twips(format.lineHeight());
      break;
    default:
      break;
  }
}

int AlignmentOf(const QTextBlockFormat& format) {
  for (const Qt::AlignmentFlag flag : {Qt::AlignRight, Qt::AlignHCenter, Qt::AlignJustify}) {
    if (format.alignment().testFlag(flag)) return flag;
  }
  return Qt::AlignLeft;
}

/// The tab stops, measured from the page's margin, without the one that a hanging indent is by itself.
QList<QTextOption::Tab> TabsOf(const QTextBlockFormat& format, const RtfParagraph& look, int firstLine) {
  QList<QTextOption::Tab> tabs = format.tabPositions();
  for (QTextOption::Tab& tab : tabs)
    tab.position = std::clamp(Twips(tab.position, 3 * kMaxTwips) + look.left + firstLine, -kMaxTwips, kMaxTwips);
  if (firstLine < 0) tabs.removeOne(QTextOption::Tab(look.left, QTextOption::LeftTab));
  return tabs.mid(0, kMaxTabs);
}

const char* AlignmentWord(int alignment) {
  switch (alignment) {
    case Qt::AlignRight:
      return "\\qr";
    case Qt::AlignHCenter:
      return "\\qc";
    case Qt::AlignJustify:
      return "\\qj";
    default:
      return "";
  }
}

const char* TabWord(QTextOption::TabType type) {
  switch (type) {
    case QTextOption::RightTab:
      return "\\tqr";
    case QTextOption::CenterTab:
      return "\\tqc";
    case QTextOption::DelimiterTab:
      return "\\tqdec";
    default:
      return "";
  }
}

}  // namespace

RtfCharacter LookOf(const QTextCharFormat& format, const QFont& defaultFont, WriterTables& tables) {
  const QFont font = format.font().resolve(defaultFont);
  RtfCharacter look;
  look.font = static_cast<int>(tables.Font(font.families().value(0, font.family())));
  look.halfPoints = HalfPoints(font);
  look.bold = font.weight() >= QFont::DemiBold;
  look.italic = font.italic();
  look.underline = font.underline();
  look.strikeOut = font.strikeOut();
  look.capitals = font.capitalization() == QFont::AllUppercase;
  look.smallCapitals = font.capitalization() == QFont::SmallCaps;
  if (format.verticalAlignment() == QTextCharFormat::AlignSuperScript) look.script = 1;
  if (format.verticalAlignment() == QTextCharFormat::AlignSubScript) look.script = -1;
  const auto number = [&tables](const QBrush& brush) {
    return brush.style() == Qt::NoBrush ? 0 : static_cast<int>(tables.Colour(brush.color()));
  };
  look.colour = number(format.foreground());
  look.highlight = number(format.background());
  return look;
}

RtfParagraph LookOf(const QTextBlock& block, WriterTables& tables) {
  const QTextBlockFormat format = block.blockFormat();
  const QTextList* list = block.textList();
  RtfParagraph look;
  look.alignment = AlignmentOf(format);
  const int steps = format.indent() + (list ? list->format().indent() : 0);
  look.left = Twips(format.leftMargin() + steps * block.document()->indentWidth());
  look.right = Twips(format.rightMargin());
  const int firstLine = Twips(format.textIndent());
  look.firstLine = firstLine;
  if (list) look.firstLine = format.hasProperty(kMarkerIndent) ? format.intProperty(kMarkerIndent) : -kMarkerTwips;
  look.before = Twips(format.topMargin());
  look.after = Twips(format.bottomMargin());
  SetSpacing(look, format);
  look.tabs = TabsOf(format, look, firstLine);
  if (list) look.list = static_cast<int>(tables.List(list));
  return look;
}

QByteArray WordsBetween(const RtfCharacter& from, const RtfCharacter& to) {
  QByteArray words;
  if (from.font != to.font) words += Word("f", to.font);
  if (from.halfPoints != to.halfPoints) words += Word("fs", to.halfPoints);
  struct Flag {
    bool RtfCharacter::*flag;
    const char* on;
    const char* off;
  };
  static constexpr std::array<Flag, 6> kFlags{{{&RtfCharacter::bold, "\\b", "\\b0"},
                                               {&RtfCharacter::italic, "\\i", "\\i0"},
                                               {&RtfCharacter::underline, "\\ul", "\\ulnone"},
                                               {&RtfCharacter::strikeOut, "\\strike", "\\strike0"},
                                               {&RtfCharacter::capitals, "\\caps", "\\caps0"},
                                               {&RtfCharacter::smallCapitals, "\\scaps", "\\scaps0"}}};
  for (const Flag& flag : kFlags) {
    if (from.*flag.flag != to.*flag.flag) words += to.*flag.flag ? flag.on : flag.off;
  }
  if (from.script != to.script) words += to.script == 0 ? "\\nosupersub" : to.script > 0 ? "\\super" : "\\sub";
  if (from.colour != to.colour) words += Word("cf", to.colour);
  if (from.highlight != to.highlight) words += Word("highlight", to.highlight);
  return words;
}

QByteArray WordsOf(const RtfParagraph& look) {
  QByteArray words = QByteArray("\\pard") + AlignmentWord(look.alignment) + WordUnless0("fi", look.firstLine) +
                     WordUnless0("li", look.left) + WordUnless0("ri", look.right) + WordUnless0("sb", look.before) +
                     WordUnless0("sa", look.after);
  if (look.spacing != 0) words += Word("sl", look.spacing) + Word("slmult", look.spacingMultiple);
  for (const QTextOption::Tab& tab : look.tabs)
    words += TabWord(tab.type) + Word("tx", static_cast<int>(tab.position));
  return words;
}

}  // namespace qbx
