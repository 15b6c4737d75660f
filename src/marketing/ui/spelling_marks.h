// The marks under misspelt words.

#pragma once

#include <QEvent>
#include <QMenu>
#include <QObject>
#include <QPoint>
#include <QString>
#include <QSyntaxHighlighter>
#include <QTextCursor>
#include <QWidget>
#include <functional>
#include <memory>

#include "marketing/ui/spelling.h"

class QLineEdit;
class QPlainTextEdit;
class QTextEdit;

namespace qbx {

/// Marks the misspelt words of a text box. A word is marked when the caret leaves it. The marks belong to the layout
/// only, and not to the text, its formats, its undo steps or the document's modified mark. (Printing the editor's
/// document would print the marks; letters are printed from their stored form.) Only a changed paragraph is checked
/// again.
class SpellingMarks : public QSyntaxHighlighter {
  Q_OBJECT

 public:
  /// Adds the spelling entries to the usual menu of the box.
  SpellingMarks(QPlainTextEdit& box, std::shared_ptr<Spelling> spelling);
  /// For a box that has its own menu and calls `AddTo`.
  SpellingMarks(QTextEdit& box, std::shared_ptr<Spelling> spelling);

  /// Adds the spelling entries to the menu of the box.
  /// \param position  of the menu, in the viewport
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
  QTextCursor typed_;  ///< in the word that is being typed; null for none
};

/// Marks the misspelt words of a line. Qt offers no marks for lines, except those of an input method, so the marks are
/// given as such.
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
  int typedAt_ = -1;        ///< position in the word that is being typed; -1 for none
  bool composing_ = false;  ///< whether an input method is active, which has its own marks
};

}  // namespace qbx
