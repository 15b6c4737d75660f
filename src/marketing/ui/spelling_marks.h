// The marks under misspelt words.

#pragma once

#include <QSyntaxHighlighter>
#include <functional>
#include <memory>

#include "marketing/ui/spelling.h"

class QLineEdit;
class QPlainTextEdit;
class QTextEdit;

namespace qbx {

/// Marks the misspelt words of a text box. A word that is being typed is marked when the caret leaves it. The marks belong to the layout: text,
/// formats, undo steps and the modified mark of the document know nothing of them. (A document that is printed from its editor would show them;
/// letters are printed from what is stored.) Only the paragraph that changed is looked at again.
class SpellingMarks : public QSyntaxHighlighter {
  Q_OBJECT

 public:
  /// Gives the box its usual menu with the entries of the spelling.
  SpellingMarks(QPlainTextEdit& box, std::shared_ptr<Spelling> spelling);
  /// The box has a menu of its own, which calls `AddTo`.
  SpellingMarks(QTextEdit& box, std::shared_ptr<Spelling> spelling);

  /// Adds the entries of the spelling to the menu of the box.
  /// \param position  in the viewport, where the menu opens
  void AddTo(QMenu& menu, QPoint position);

 protected:
  void highlightBlock(const QString& text) override;
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  template <class Box>
  void Watch(Box& box);
  void NoteChange(int position, int added);
  void LeaveWord();

  std::shared_ptr<Spelling> spelling_;
  QWidget& box_;
  std::function<QTextCursor()> caret_;
  std::function<void(const QTextCursor&)> setCaret_;
  std::function<QTextCursor(QPoint)> cursorAt_;
  QTextCursor typed_;  ///< in the word that is being typed; null when there is none
};

/// The same for a line. The library draws no marks there by itself; it draws those of an input method, which is what these are to it.
class LineSpellingMarks : public QObject {
  Q_OBJECT

 public:
  LineSpellingMarks(QLineEdit& line, std::shared_ptr<Spelling> spelling);

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void NoteCaret();
  void Draw();
  void ShowMenu(QPoint position);

  QLineEdit& line_;
  std::shared_ptr<Spelling> spelling_;
  int typedAt_ = -1;        ///< in the word that is being typed; -1 when there is none
  bool composing_ = false;  ///< an input method is at work, and shows marks of its own
};

}  // namespace qbx
