// Looking words up in a dictionary of the system.

#pragma once

#include <QSet>
#include <QString>
#include <QStringList>
#include <memory>

namespace qbx {

/// Where dictionaries and the user's own words are.
struct SpellingFiles {
  QStringList languages;  ///< such as "en_GB"; the first that is installed is taken
  QString ownWords;       ///< the user's own words, one a line in UTF-8; made with the first word
  QString folder = QStringLiteral("/usr/share/hunspell");
};

/// One dictionary, the user's own words, and the words that are ignored until the program ends. Without a dictionary
/// every word counts as correct.
///
///   SpellChecker checker({.languages = {"en_GB"}, .ownWords = folder + "MARKETING-WORDS-pat.TXT"});
///   for (const WordPlace& word : WordsToCheck(text))
///     if (!checker.IsCorrect(text.mid(word.start, word.length))) ...
class SpellChecker {
 public:
  explicit SpellChecker(SpellingFiles files);
  ~SpellChecker();
  SpellChecker(const SpellChecker&) = delete;
  SpellChecker& operator=(const SpellChecker&) = delete;

  [[nodiscard]] bool HasDictionary() const;
  /// A word that the dictionary's character set cannot express counts as correct.
  [[nodiscard]] bool IsCorrect(const QString& word) const;
  /// The likeliest first. Takes some hundredths of a second.
  [[nodiscard]] QStringList Suggestions(const QString& word) const;

  /// Keeps a word as one of the user's own. It counts at once, also when the file cannot be written.
  /// \return what went wrong with the file; empty when it worked
  [[nodiscard]] QString AddWord(const QString& word);
  /// Takes a word for correct as long as this lives.
  void IgnoreWord(const QString& word);

 private:
  class Dictionary;

  SpellingFiles files_;
  std::unique_ptr<Dictionary> dictionary_;
  QSet<QString> ignored_;
};

}  // namespace qbx
