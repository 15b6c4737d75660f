// Looking words up in a dictionary of the system.

#pragma once

#include <QSet>
#include <QString>
#include <QStringList>
#include <memory>

namespace qbx {

/// The dictionary's language and the file of the user's own words.
struct SpellingFiles {
  QStringList languages;  ///< such as "en_GB"; the first installed one is used
  QString ownWords;       ///< the user's own words, one a line in UTF-8; the file is made with the first word
  QString folder = QStringLiteral("/usr/share/hunspell");
};

/// Checks words against one dictionary, the user's own words, and the words ignored until the program ends. Without a
/// dictionary every word counts as correct.
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
  /// Whether the word is correct. A word that the dictionary's character set cannot express counts as correct.
  [[nodiscard]] bool IsCorrect(const QString& word) const;
  /// Similar words from the dictionary, the likeliest first. Takes some hundredths of a second.
  [[nodiscard]] QStringList Suggestions(const QString& word) const;

  /// Adds a word to the user's own words. It counts at once, even when the file cannot be written.
  /// \return why the file could not be written; empty when it was
  [[nodiscard]] QString AddWord(const QString& word);
  /// Counts a word as correct for the lifetime of this object.
  void IgnoreWord(const QString& word);

 private:
  class Dictionary;

  SpellingFiles files_;
  std::unique_ptr<Dictionary> dictionary_;
  QSet<QString> ignored_;
};

}  // namespace qbx
