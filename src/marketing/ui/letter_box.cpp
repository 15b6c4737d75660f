#include "marketing/ui/letter_box.h"

#include <QAbstractTextDocumentLayout>
#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMimeData>
#include <QPaintEvent>
#include <QPainter>
#include <QPalette>
#include <QPen>
#include <QPoint>
#include <QScrollBar>
#include <QSize>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocumentFragment>
#include <QTextFormat>
#include <QWidget>

#include "rtf/selection.h"

namespace qbx {
namespace {

constexpr int kLeastHeight = 110;

/// The dragged text: plain for other programs, with formats for this letter.
class DraggedLetter : public QMimeData {
 public:
  explicit DraggedLetter(const QTextDocumentFragment& part) : part_(part) { setText(part.toPlainText()); }
  [[nodiscard]] const QTextDocumentFragment& Part() const { return part_; }

 private:
  QTextDocumentFragment part_;
};

}  // namespace

LetterBox::LetterBox(QWidget* parent) : QTextEdit(parent) {
  setTabChangesFocus(true);
  QPalette paper = palette();
  paper.setColor(QPalette::Base, Qt::white);
  paper.setColor(QPalette::Text, Qt::black);
  setPalette(paper);
}

QSize LetterBox::sizeHint() const {
  return {QTextEdit::sizeHint().width(), kLeastHeight};
}

void LetterBox::CopyText() {
  if (textCursor().hasSelection()) QGuiApplication::clipboard()->setText(textCursor().selection().toPlainText());
}

void LetterBox::CutText() {
  CopyText();
  textCursor().removeSelectedText();
}

void LetterBox::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Cut)) return CutText();
  if (event->matches(QKeySequence::Copy)) return CopyText();
  if (event->key() == Qt::Key_Tab && event->modifiers() == Qt::ControlModifier) {
    textCursor().insertText(QStringLiteral("\t"));
    return;
  }
  if (event->matches(QKeySequence::InsertParagraphSeparator)) return BreakParagraph(event);
  QTextEdit::keyPressEvent(event);
}

void LetterBox::BreakParagraph(QKeyEvent* event) {
  const QTextCursor cursor = textCursor();
  // Enter in an empty item ends the list.
  if (cursor.currentList() && cursor.block().length() == 1) return SetBullets(cursor, false);
  QTextEdit::keyPressEvent(event);
  DropCopiedBreaks(textCursor(), cursor.selectionStart() - 1);
}

QMimeData* LetterBox::createMimeDataFromSelection() const {
  return new DraggedLetter(textCursor().selection());
}

bool LetterBox::canInsertFromMimeData(const QMimeData* source) const {
  return source->hasText();
}

void LetterBox::insertFromMimeData(const QMimeData* source) {
  QTextCursor cursor = textCursor();
  const int start = cursor.selectionStart();
  if (const auto* dragged = dynamic_cast<const DraggedLetter*>(source)) {
    cursor.insertFragment(dragged->Part());
  } else {
    cursor.insertText(source->text(), currentCharFormat());
    DropCopiedBreaks(cursor, start);
  }
  setTextCursor(cursor);
  ensureCursorVisible();
}

void LetterBox::paintEvent(QPaintEvent* event) {
  QTextEdit::paintEvent(event);
  QPainter painter(viewport());
  painter.setPen(QPen(Qt::gray, 1, Qt::DashLine));
  const int scrolled = verticalScrollBar()->value();
  for (QTextBlock block = cursorForPosition(QPoint(0, 0)).block(); block.isValid(); block = block.next()) {
    const int top = qRound(document()->documentLayout()->blockBoundingRect(block).top()) - scrolled;
    if (top > viewport()->height()) break;
    if (block.blockFormat().pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore)
      painter.drawLine(0, top, viewport()->width(), top);
  }
}

}  // namespace qbx
