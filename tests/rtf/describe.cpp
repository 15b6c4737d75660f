#include "describe.h"

#include <QFont>
#include <QTextBlock>
#include <QTextList>

namespace qbx {
namespace {

QString CharacterLook(const QTextCharFormat& format) {
  const QFont font = format.font();
  QStringList words;
  if (font.bold()) words << u"b"_qs;
  if (font.italic()) words << u"i"_qs;
  if (font.underline()) words << u"ul"_qs;
  if (font.strikeOut()) words << u"strike"_qs;
  if (font.capitalization() == QFont::AllUppercase) words << u"caps"_qs;
  if (font.capitalization() == QFont::SmallCaps) words << u"scaps"_qs;
  if (format.verticalAlignment() == QTextCharFormat::AlignSuperScript) words << u"super"_qs;
  if (format.verticalAlignment() == QTextCharFormat::AlignSubScript) words << u"sub"_qs;
  if (format.fontPointSize() != 12) words << u"%1pt"_qs.arg(format.fontPointSize());
  if (font.families() != QStringList(u"Tahoma"_qs)) words << font.families();
  if (format.foreground().style() != Qt::NoBrush) words << format.foreground().color().name();
  if (format.background().style() != Qt::NoBrush) words << u"on "_qs + format.background().color().name();
  return words.join(u' ');
}

QString TabsOf(const QTextBlockFormat& format) {
  QString tabs;
  for (const QTextOption::Tab& tab : format.tabPositions())
    tabs += u" %1%2"_qs.arg(tab.position).arg(u"LRCD"_qs[tab.type]);
  return tabs;
}

QString ParagraphLook(const QTextBlock& block) {
  const QTextBlockFormat format = block.blockFormat();
  QStringList words;
  if (format.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore) words << u"page"_qs;
  if (format.alignment() & Qt::AlignHCenter) words << u"centre"_qs;
  if (format.alignment() & Qt::AlignRight) words << u"to the right"_qs;
  if (format.alignment() & Qt::AlignJustify) words << u"justified"_qs;
  const std::pair<const char16_t*, double> lengths[]{{u"left %1", format.leftMargin()},
                                                     {u"right %1", format.rightMargin()},
                                                     {u"first %1", format.textIndent()},
                                                     {u"before %1", format.topMargin()},
                                                     {u"after %1", format.bottomMargin()}};
  for (const auto& [word, pixels] : lengths) {
    if (pixels != 0) words << QString::fromUtf16(word).arg(pixels);
  }
  const QStringList spacings{QString(), u"%1%"_qs, u"exactly %1"_qs, u"at least %1"_qs};
  if (format.lineHeightType() != 0) words << spacings.value(format.lineHeightType()).arg(format.lineHeight());
  if (!format.tabPositions().isEmpty()) words << u"tabs"_qs + TabsOf(format);
  if (const QTextList* list = block.textList()) {
    const QString names[]{u"square"_qs, u"circle"_qs, u"disc"_qs};
    const int style = list->format().style();
    const bool bullet = style >= QTextListFormat::ListSquare;
    words << (bullet ? u"%1 %2"_qs.arg(names[style + 3]).arg(list->itemNumber(block) + 1) : list->itemText(block));
  }
  return words.isEmpty() ? QString() : u'<' + words.join(u' ') + u'>';
}

}  // namespace

QString Described(const QTextDocument& document) {
  QStringList paragraphs;
  QString last;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    QString text = ParagraphLook(block);
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      const QTextCharFormat format = part.fragment().charFormat();
      if (format.isImageFormat()) {
        const QTextImageFormat image = format.toImageFormat();
        text += u"[picture %1x%2]"_qs.arg(image.width()).arg(image.height());
        continue;
      }
      const QString look = CharacterLook(format);
      if (look != last) text += u'[' + look + u']';
      last = look;
      text += part.fragment().text();
    }
    paragraphs << text;
  }
  return paragraphs.join(u'\n');
}

}  // namespace qbx
