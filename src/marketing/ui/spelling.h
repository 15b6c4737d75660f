// What the editors of step 4 share for checking the spelling.

#pragma once

#include <QAction>
#include <QEvent>
#include <QObject>
#include <QString>
#include <QTextCharFormat>
#include <functional>

#include "spelling/spell_checker.h"
#include "startup/application.h"

class QMenu;
class QWidget;

namespace qbx {

/// The dictionary, whether the user wants it used (stored for each user), and the entries of the editors' menus.
class Spelling : public QObject {
  Q_OBJECT

 public:
  explicit Spelling(Application& app);

  /// Whether a word must be marked.
  [[nodiscard]] bool IsWrong(const QString& word) const { return on_ && !checker_.IsCorrect(word); }
  /// The format of a marked word in a box.
  [[nodiscard]] static QTextCharFormat Mark(const QWidget& box);

  /// Adds suggestions, "Add to dictionary" and "Ignore" before a menu's entries, and after them a tick that turns the
  /// check on and off.
  /// \param word     the word under the menu; may be empty
  /// \param replace  replaces it by a suggestion
  void AddTo(QMenu& menu, const QString& word, const std::function<void(const QString&)>& replace);

  /// Qt opens context menus only with the menu key. This opens one with Shift+F10, too.
  /// \return whether the event was this key, for a box with its own menu
  static bool OpensMenu(QWidget& box, const QEvent& event);

 Q_SIGNALS:
  /// Words may have become right or wrong.
  void Changed();

 private:
  void AddWordEntries(QMenu& menu, QAction* first, const QString& word,
                      const std::function<void(const QString&)>& replace);
  void TurnOn(bool on);
  void AddWord(const QString& word);

  Application& app_;
  SpellChecker checker_;
  bool on_;
};

}  // namespace qbx
