#include "marketing/ui/spelling_marks.h"

#include <QCoreApplication>
#include <QEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QList>
#include <QMenu>
#include <QObject>
#include <QPlainTextEdit>
#include <QPoint>
#include <QString>
#include <QTextBlock>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
#include <QWidget>

#include "spelling/words.h"

namespace qbx {
namespace {

constexpr qsizetype kLongestParagraph = 20'000;  // a longer paragraph would take too long at every key

bool Touches(const std::optional<WordPlace>& word, qsizetype position) {
  return word && word->start <= position && position <= word->start + word->length;
}

/// The misspelt words of a text except the one that is being typed.
/// \param typedAt  the position of the caret in it; -1 for none
std::vector<WordPlace> WordsToMark(const Spelling& spelling, const QString& text, qsizetype typedAt) {
  if (text.size() > kLongestParagraph) return {};
  std::vector<WordPlace> words = WordsToCheck(text);
  std::erase_if(words, [&](const WordPlace& word) {
    return Touches(word, typedAt) || !spelling.IsWrong(text.mid(word.start, word.length));
  });
  return words;
}

}  // namespace

SpellingMarks::SpellingMarks(QPlainTextEdit& box, std::shared_ptr<Spelling> spelling)
    : QSyntaxHighlighter(static_cast<QObject*>(box.document())), spelling_(std::move(spelling)), box_(box) {
  Watch(box);
  box.setContextMenuPolicy(Qt::CustomContextMenu);
  connect(&box, &QWidget::customContextMenuRequested, this, [this, &box](QPoint position) {
    const std::unique_ptr<QMenu> menu(box.createStandardContextMenu(position));
    AddTo(*menu, position);
    menu->exec(box.viewport()->mapToGlobal(position));
  });
}

SpellingMarks::SpellingMarks(QTextEdit& box, std::shared_ptr<Spelling> spelling)
    : QSyntaxHighlighter(static_cast<QObject*>(box.document())), spelling_(std::move(spelling)), box_(box) {
  Watch(box);
}

template <class Box>
void SpellingMarks::Watch(Box& box) {
  caret_ = [&box] { return box.textCursor(); };
  setCaret_ = [&box](const QTextCursor& cursor) { box.setTextCursor(cursor); };
  cursorAt_ = [&box](QPoint position) { return box.cursorForPosition(position); };
  box.installEventFilter(this);
  connect(spelling_.get(), &Spelling::Changed, this, &QSyntaxHighlighter::rehighlight);
  connect(&box, &Box::cursorPositionChanged, this, [this] {
    if (typed_.isNull()) return;
    const QTextCursor caret = caret_();
    const std::optional<WordPlace> word = WordAt(typed_.block().text(), typed_.positionInBlock());
    if (caret.block() != typed_.block() || !Touches(word, caret.positionInBlock())) LeaveWord();
  });
  // Connected before the base class, which then checks the changed paragraphs.
  connect(box.document(), &QTextDocument::contentsChange, this,
          [this](int position, int /*removed*/, int added) { NoteChange(position, added); });
  setDocument(box.document());
}

void SpellingMarks::NoteChange(int position, int added) {
  const QTextCursor caret = caret_();
  // Typed text ends at the caret; loaded text and undone changes do not.
  if (!caret.isNull() && caret.position() == position + added) {
    typed_ = caret;
  } else {
    LeaveWord();
  }
}

void SpellingMarks::LeaveWord() {
  if (typed_.isNull()) return;
  const QTextBlock left = typed_.block();
  typed_ = {};
  rehighlightBlock(left);
}

void SpellingMarks::highlightBlock(const QString& text) {
  const bool typing = !typed_.isNull() && typed_.block() == currentBlock();
  const QTextCharFormat mark = Spelling::Mark(box_);
  for (const WordPlace& word : WordsToMark(*spelling_, text, typing ? caret_().positionInBlock() : -1))
    setFormat(static_cast<int>(word.start), static_cast<int>(word.length), mark);
}

bool SpellingMarks::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::FocusOut) LeaveWord();
  return Spelling::OpensMenu(box_, *event) || QSyntaxHighlighter::eventFilter(object, event);
}

void SpellingMarks::AddTo(QMenu& menu, QPoint position) {
  QTextCursor cursor = cursorAt_(position);
  const QTextBlock block = cursor.block();
  if (const std::optional<WordPlace> word = WordAt(block.text(), cursor.positionInBlock())) {
    const int start = block.position() + static_cast<int>(word->start);
    cursor.setPosition(start);
    cursor.setPosition(start + static_cast<int>(word->length), QTextCursor::KeepAnchor);
  }
  spelling_->AddTo(menu, cursor.selectedText(), [this, cursor](const QString& suggestion) {
    setCaret_(cursor);
    caret_().insertText(suggestion);
  });
}

LineSpellingMarks::LineSpellingMarks(QLineEdit& line, std::shared_ptr<Spelling> spelling)
    : QObject(&line), line_(line), spelling_(std::move(spelling)) {
  line.installEventFilter(this);
  line.setContextMenuPolicy(Qt::CustomContextMenu);
  connect(&line, &QWidget::customContextMenuRequested, this, &LineSpellingMarks::ShowMenu);
  connect(spelling_.get(), &Spelling::Changed, this, &LineSpellingMarks::Draw);
  connect(&line, &QLineEdit::textEdited, this, [this] { typedAt_ = line_.cursorPosition(); });
  connect(&line, &QLineEdit::textChanged, this, &LineSpellingMarks::Draw);
  connect(&line, &QLineEdit::cursorPositionChanged, this, &LineSpellingMarks::NoteCaret);
}

void LineSpellingMarks::NoteCaret() {
  if (typedAt_ >= 0 && !Touches(WordAt(line_.text(), typedAt_), line_.cursorPosition())) typedAt_ = -1;
  Draw();
}

void LineSpellingMarks::Draw() {
  if (composing_) return;
  const QString text = line_.text();
  const int caret = line_.cursorPosition();
  const QTextCharFormat mark = Spelling::Mark(line_);
  QList<QInputMethodEvent::Attribute> marks;
  for (const WordPlace& word : WordsToMark(*spelling_, text, typedAt_ >= 0 ? caret : -1)) {
    marks.append(QInputMethodEvent::Attribute(QInputMethodEvent::TextFormat, static_cast<int>(word.start) - caret,
                                              static_cast<int>(word.length), mark));
  }
  QInputMethodEvent event(QString(), marks);
  QCoreApplication::sendEvent(&line_, &event);
}

bool LineSpellingMarks::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::InputMethod)
    composing_ = !static_cast<QInputMethodEvent*>(event)->preeditString().isEmpty();
  // A line that is being destroyed also loses the focus, but is no longer a QLineEdit.
  if (event->type() == QEvent::FocusOut && qobject_cast<QLineEdit*>(object) != nullptr) {
    typedAt_ = -1;
    Draw();
  }
  return Spelling::OpensMenu(line_, *event) || QObject::eventFilter(object, event);
}

void LineSpellingMarks::ShowMenu(QPoint position) {
  const std::unique_ptr<QMenu> menu(line_.createStandardContextMenu());
  const WordPlace word = WordAt(line_.text(), line_.cursorPositionAt(position)).value_or(WordPlace());
  spelling_->AddTo(*menu, line_.text().mid(word.start, word.length), [this, word](const QString& suggestion) {
    line_.setSelection(static_cast<int>(word.start), static_cast<int>(word.length));
    line_.insert(suggestion);
  });
  menu->exec(line_.mapToGlobal(position));
}

}  // namespace qbx
