// What the editors of step 4 share to check the spelling.

#pragma once

#include <QObject>
#include <QTextCharFormat>
#include <functional>

#include "spelling/spell_checker.h"
#include "startup/application.h"

class QMenu;
class QWidget;

namespace qbx {

/// The dictionary, whether the user wants it used (kept for each user), and the entries of the editors' menus.
class Spelling : public QObject {
  Q_OBJECT

 public:
  explicit Spelling(Application& app);

  /// Whether a word is to be marked.
  [[nodiscard]] bool IsWrong(const QString& word) const { return on_ && !checker_.IsCorrect(word); }
  /// How it is marked in a box.
  [[nodiscard]] static QTextCharFormat Mark(const QWidget& box);

  /// Puts what is meant, "Add to dictionary" and "Ignore" in front of a menu's entries, and a tick to turn the check off and on behind them.
  /// \param word     that the menu was opened on; may be empty
  /// \param replace  puts one of the suggestions in its place
  void AddTo(QMenu& menu, const QString& word, const std::function<void(const QString&)>& replace);

  /// The library opens menus with the menu key alone. This opens one with Shift+F10, too.
  /// \return whether the event, which came to a box with a menu of its own, was that key
  static bool OpensMenu(QWidget& box, const QEvent& event);

 Q_SIGNALS:
  /// What was wrong may be right, or the other way round.
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
