#include "rtf/selection.h"

#include <QFont>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>
#include <algorithm>

#include "rtf/formats.h"

namespace qbx {
namespace {

constexpr double kBulletPixels = kMarkerTwips / kTwipsAPixel;

bool HasBreak(const QTextBlock& block) {
  return block.blockFormat().pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore;
}

bool HasBullet(const QTextBlock& block) {
  const QTextList* list = block.textList();
  return list && list->format().style() >= QTextListFormat::ListSquare;
}

Qt::Alignment AlignmentOf(const QTextBlock& block) {
  const Qt::Alignment alignment = block.blockFormat().alignment() & Qt::AlignHorizontal_Mask;
  return alignment ? alignment : Qt::AlignLeft;
}

/// Reduces a format to what it shares with one more part.
void Join(SelectionLook& look, const QFont& font, bool first) {
  const QString family = font.families().value(0, font.family());
  if (first) {
    look.family = family;
    look.points = font.pointSizeF();
    look.bold = look.italic = look.underline = true;
  }
  if (look.family != family) look.family.clear();
  if (look.points != font.pointSizeF()) look.points = 0;
  look.bold &= font.bold();
  look.italic &= font.italic();
  look.underline &= font.underline();
}

/// Calls `visit` for each selected paragraph, or for the cursor's paragraph when nothing is selected.
template <typename Visit>
void ForEachBlock(const QTextCursor& selection, const Visit& visit) {
  QTextBlock block = selection.document()->findBlock(selection.selectionStart());
  do {
    visit(block);
    block = block.next();
  } while (block.isValid() && block.position() < selection.selectionEnd());
}

void SetBreak(QTextCursor& cursor, bool on) {
  QTextBlockFormat format = cursor.blockFormat();
  format.setPageBreakPolicy(on ? QTextFormat::PageBreak_AlwaysBefore : QTextFormat::PageBreak_Auto);
  cursor.setBlockFormat(format);
}

}  // namespace

SelectionLook LookOfSelection(const QTextCursor& selection, const QTextCharFormat& typing) {
  SelectionLook look;
  const QFont defaultFont = selection.document()->defaultFont();
  bool first = true;
  const auto join = [&](const QTextCharFormat& format) {
    Join(look, format.font().resolve(defaultFont), first);
    first = false;
  };
  look.alignment = AlignmentOf(selection.document()->findBlock(selection.selectionStart()));
  look.bullets = true;
  ForEachBlock(selection, [&](const QTextBlock& block) {
    if (look.alignment != AlignmentOf(block)) look.alignment = {};
    look.bullets &= HasBullet(block);
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      const QTextFragment fragment = part.fragment();
      const bool selected = fragment.position() < selection.selectionEnd() &&
                            fragment.position() + fragment.length() > selection.selectionStart();
      if (selected && selection.hasSelection() && !fragment.charFormat().isImageFormat()) join(fragment.charFormat());
    }
  });
  if (first) join(typing);
  look.pageBreak = HasBreak(selection.block());
  return look;
}

void SetBullets(QTextCursor selection, bool on) {
  selection.beginEditBlock();
  QTextList* list = nullptr;
  ForEachBlock(selection, [&](const QTextBlock& block) {
    if (HasBullet(block) == on) return;
    QTextCursor cursor(block);
    if (QTextList* old = block.textList()) old->remove(block);
    QTextBlockFormat format = block.blockFormat();
    format.setLeftMargin(std::max(0.0, format.leftMargin() + (on ? kBulletPixels : -kBulletPixels)));
    format.clearProperty(kMarkerIndent);
    cursor.setBlockFormat(format);
    if (!on) return;
    if (list) return list->add(block);
    QTextListFormat bullets;
    bullets.setStyle(QTextListFormat::ListDisc);
    bullets.setIndent(0);
    list = cursor.createList(bullets);
  });
  selection.endEditBlock();
}

void TogglePageBreak(QTextCursor& cursor) {
  cursor.beginEditBlock();
  const bool on = !HasBreak(cursor.block());
  if (on && !cursor.atBlockStart()) cursor.insertBlock();
  SetBreak(cursor, on);
  cursor.endEditBlock();
}

void DropCopiedBreaks(const QTextCursor& cursor, int start) {
  QTextBlock block = cursor.document()->findBlock(start).next();
  const int end = cursor.position();
  for (; block.isValid() && block.position() <= end; block = block.next()) {
    if (!HasBreak(block)) continue;
    QTextCursor broken(block);
    broken.joinPreviousEditBlock();
    SetBreak(broken, false);
    broken.endEditBlock();
  }
}

}  // namespace qbx
