#include "rtf/document_builder.h"

#include <QTextBlock>
#include <algorithm>
#include <cstdlib>
#include <optional>

#include "rtf/tokens.h"

namespace qbx {
namespace {

double Pixels(int twips) {
  return twips / kTwipsAPixel;
}

void SetLineHeight(QTextBlockFormat& format, const RtfParagraph& look) {
  if (look.spacing == 0 || (look.spacingMultiple != 0 && look.spacing == 240)) return;
  if (look.spacingMultiple != 0) {
    format.setLineHeight(std::abs(look.spacing) / 2.4, QTextBlockFormat::ProportionalHeight);
  } else {
    format.setLineHeight(Pixels(std::abs(look.spacing)),
                         look.spacing > 0 ? QTextBlockFormat::MinimumHeight : QTextBlockFormat::FixedHeight);
  }
}

/// Tab stops measured as Qt does it: from the start of the first line.
QList<QTextOption::Tab> TabsFromLineStart(const RtfParagraph& look, int firstLine) {
  QList<QTextOption::Tab> tabs = look.tabs;
  // The left margin of a hanging indent is a tab stop of its own.
  if (firstLine < 0) tabs.append(QTextOption::Tab(look.left, QTextOption::LeftTab));
  for (QTextOption::Tab& tab : tabs)
    tab.position = (tab.position - look.left - firstLine) / kTwipsAPixel;
  std::sort(tabs.begin(), tabs.end(), [](const auto& a, const auto& b) { return a.position < b.position; });
  return tabs;
}

}  // namespace

DocumentBuilder::DocumentBuilder(QTextDocument& document, const RtfFonts& fonts, const RtfColours& colours,
                                 const RtfLists& lists)
    : document_(document), fonts_(fonts), colours_(colours), lists_(lists) {
  document.clear();
  cursor_ = QTextCursor(&document);
  cursor_.beginEditBlock();
}

void DocumentBuilder::AddText(QStringView text, const RtfCharacter& look) {
  const QString cleaned = CleanedRtfText(text);
  if (cleaned.isEmpty()) return;
  const bool another = !goesOn_ || !lastKnown_ || !(look == lastLook_);
  if (another) runs_.push_back({QString(), FormatOf(look)});
  QString& run = runs_.back().text;
  for (; cells_ > 0; --cells_)
    run += u'\t';
  run += cleaned;
  goesOn_ = true;
}

void DocumentBuilder::AddPicture(const RtfPicture& picture) {
  runs_.push_back({QString(QChar::ObjectReplacementCharacter), picture.AddTo(document_, ++pictures_)});
  goesOn_ = false;
}

const QTextCharFormat& DocumentBuilder::FormatOf(const RtfCharacter& look) {
  if (lastKnown_ && look == lastLook_) return lastFormat_;
  QTextCharFormat format;
  const QString name = fonts_.Find(look.font < 0 ? defaultFont_ : look.font).name.trimmed();
  if (!name.isEmpty()) format.setFontFamilies({name});
  format.setFontPointSize(std::max(look.halfPoints, 1) / 2.0);
  if (look.bold) format.setFontWeight(QFont::Bold);
  if (look.italic) format.setFontItalic(true);
  if (look.underline) format.setFontUnderline(true);
  if (look.strikeOut) format.setFontStrikeOut(true);
  if (look.capitals) format.setFontCapitalization(QFont::AllUppercase);
  if (look.smallCapitals) format.setFontCapitalization(QFont::SmallCaps);
  if (look.script != 0) {
    format.setVerticalAlignment(look.script > 0 ? QTextCharFormat::AlignSuperScript : QTextCharFormat::AlignSubScript);
  }
  const QColor colour = colours_.Find(look.colour);
  if (colour.isValid()) format.setForeground(colour);
  const QColor highlight = colours_.Find(look.highlight);
  if (look.highlight > 0 && highlight.isValid()) format.setBackground(highlight);
  lastLook_ = look;
  lastFormat_ = format;
  lastKnown_ = true;
  return lastFormat_;
}

const QTextBlockFormat& DocumentBuilder::FormatOf(const RtfParagraph& look, bool inList) {
  if (anyParagraph_ && look == lastParagraph_ && inList == lastInList_) return lastBlockFormat_;
  QTextBlockFormat format;
  if (look.alignment != Qt::AlignLeft) format.setAlignment(Qt::Alignment(look.alignment));
  if (look.left != 0) format.setLeftMargin(Pixels(look.left));
  if (look.right != 0) format.setRightMargin(Pixels(look.right));
  // Qt's bullets hang by themselves.
  if (inList) format.setProperty(kMarkerIndent, look.firstLine);
  const int firstLine = inList ? 0 : look.firstLine;
  if (firstLine != 0) format.setTextIndent(Pixels(firstLine));
  if (look.before != 0) format.setTopMargin(Pixels(look.before));
  if (look.after != 0) format.setBottomMargin(Pixels(look.after));
  SetLineHeight(format, look);
  const QList<QTextOption::Tab> tabs = TabsFromLineStart(look, firstLine);
  if (!tabs.isEmpty()) format.setTabPositions(tabs);
  if (look.pageBreakBefore != 0) format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
  lastParagraph_ = look;
  lastInList_ = inList;
  lastBlockFormat_ = format;
  return lastBlockFormat_;
}

void DocumentBuilder::EndParagraph(const RtfParagraph& look, const RtfCharacter& mark) {
  std::optional<QTextListFormat> list = look.list > 0 ? lists_.Find(look.list, look.level) : std::nullopt;
  const bool oldList = !list && look.marker != QTextListFormat::ListStyleUndefined;
  if (oldList) {
    list = QTextListFormat();
    list->setStyle(static_cast<QTextListFormat::Style>(look.marker));
  }
  QTextBlockFormat format = FormatOf(look, list.has_value());
  if (breakBefore_) format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
  const QTextCharFormat markFormat = FormatOf(mark);
  if (anyParagraph_) {
    cursor_.insertBlock(format, markFormat);
  } else {
    cursor_.setBlockFormat(format);
    cursor_.setBlockCharFormat(markFormat);
  }
  for (const Run& run : runs_)
    cursor_.insertText(run.text, run.format);
  if (!oldList) openLists_.remove({0, 0});
  if (list) AddToList(look, *list);

  anyParagraph_ = true;
  runs_.clear();
  goesOn_ = false;
  breakBefore_ = false;
  cells_ = 0;
}

void DocumentBuilder::AddToList(const RtfParagraph& look, const QTextListFormat& format) {
  const bool listed = lists_.Find(look.list, look.level).has_value();
  const std::pair<int, int> key(listed ? look.list : 0, listed ? look.level : 0);
  for (int deeper = key.second + 1; deeper <= kMaxListLevel; ++deeper)
    openLists_.remove({key.first, deeper});
  QTextList* list = openLists_.value(key);
  if (list && list->format().style() == format.style() && list->count() < kMaxListItems) {
    list->add(cursor_.block());
    return;
  }
  QTextListFormat flat = format;
  flat.setIndent(0);  // the paragraph's own margin gives its position
  openLists_[key] = cursor_.createList(flat);
}

void DocumentBuilder::EndStarted(const RtfParagraph& look, const RtfCharacter& mark) {
  cells_ = 0;
  if (!runs_.empty()) EndParagraph(look, mark);
}

void DocumentBuilder::BreakPage(const RtfParagraph& look, const RtfCharacter& mark) {
  EndStarted(look, mark);
  breakBefore_ = true;
}

void DocumentBuilder::ForgetBreak() {
  if (runs_.empty()) breakBefore_ = false;
}

void DocumentBuilder::Finish(const RtfParagraph& look, const RtfCharacter& mark) {
  if (!runs_.empty() || !anyParagraph_) EndParagraph(look, mark);
  cursor_.endEditBlock();
}

}  // namespace qbx
