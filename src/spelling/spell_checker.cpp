#include "spelling/spell_checker.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <QStringEncoder>
#include <hunspell.hxx>
#include <optional>
#include <string>

#include "platform/safe_file.h"

namespace qbx {
namespace {

constexpr int kLockTimeout = 2000;  // milliseconds
constexpr QChar kTypedApostrophe = u'\'';
constexpr QChar kPrintedApostrophe = u'\u2019';

QString WithTypedApostrophes(QString word) {
  return word.replace(kPrintedApostrophe, kTypedApostrophe);
}

QStringList ReadWords(const QString& path) {
  QStringList words;
  for (const QString& line : QString::fromUtf8(ReadWholeFile(path).value_or(QByteArray())).split(u'\n')) {
    if (!line.trimmed().isEmpty()) words.append(line.trimmed());
  }
  return words;
}

/// Adds a word to the file under a lock, because other windows of the user write to the same file.
QString WriteWord(const QString& path, const QString& word) {
  const FileLock lock(path + QStringLiteral(".lock"), kLockTimeout);
  if (!lock.Locked()) return QStringLiteral("The file \"%1\" is in use.").arg(path);
  QStringList words = ReadWords(path);
  if (words.contains(word)) return {};
  words.append(word);
  return ReplaceFile(path, words.join(u'\n').toUtf8() + '\n');
}

}  // namespace

/// A Hunspell dictionary. It converts words between the program's text and the dictionary's character set.
class SpellChecker::Dictionary {
 public:
  /// \return null when the language is not installed or its character set is unknown
  static std::unique_ptr<Dictionary> Open(const QString& folder, const QString& language) {
    const QString path = folder + u'/' + language;
    if (!QFileInfo(path + QStringLiteral(".aff")).isReadable()) return nullptr;
    if (!QFileInfo(path + QStringLiteral(".dic")).isReadable()) return nullptr;
    auto dictionary = std::make_unique<Dictionary>(QFile::encodeName(path));
    return dictionary->encode_.isValid() && dictionary->decode_.isValid() ? std::move(dictionary) : nullptr;
  }

  explicit Dictionary(const QByteArray& path)
      : words_((path + ".aff").constData(), (path + ".dic").constData()),
        encode_(words_.get_dict_encoding().c_str()),
        decode_(words_.get_dict_encoding().c_str()) {}

  bool Holds(const QString& word) {
    const std::optional<std::string> bytes = Encoded(word);
    return !bytes || words_.spell(*bytes);
  }

  QStringList Near(const QString& word) {
    QStringList near;
    const std::optional<std::string> bytes = Encoded(word);
    if (!bytes) return near;
    for (const std::string& found : words_.suggest(*bytes))
      near.append(decode_(QByteArrayView(found)));
    return near;
  }

  void Add(const QString& word) {
    if (const std::optional<std::string> bytes = Encoded(word)) words_.add(*bytes);
  }

 private:
  /// \return nothing when the character set lacks a letter
  std::optional<std::string> Encoded(const QString& word) {
    const QByteArray bytes = encode_(word);
    const bool lacking = encode_.hasError();
    encode_.resetState();
    if (lacking) return std::nullopt;
    return bytes.toStdString();
  }

  Hunspell words_;
  QStringEncoder encode_;
  QStringDecoder decode_;
};

SpellChecker::SpellChecker(SpellingFiles files) : files_(std::move(files)) {
  for (const QString& language : files_.languages) {
    if (!dictionary_) dictionary_ = Dictionary::Open(files_.folder, language);
  }
  if (!dictionary_) return;
  for (const QString& word : ReadWords(files_.ownWords))
    dictionary_->Add(WithTypedApostrophes(word));
}

SpellChecker::~SpellChecker() = default;

bool SpellChecker::HasDictionary() const {
  return dictionary_ != nullptr;
}

bool SpellChecker::IsCorrect(const QString& word) const {
  return !dictionary_ || ignored_.contains(word) || dictionary_->Holds(WithTypedApostrophes(word));
}

QStringList SpellChecker::Suggestions(const QString& word) const {
  QStringList suggestions = dictionary_ ? dictionary_->Near(WithTypedApostrophes(word)) : QStringList();
  if (word.contains(kPrintedApostrophe)) suggestions.replaceInStrings(kTypedApostrophe, kPrintedApostrophe);
  return suggestions;
}

QString SpellChecker::AddWord(const QString& word) {
  if (dictionary_) dictionary_->Add(WithTypedApostrophes(word));
  return WriteWord(files_.ownWords, word);
}

void SpellChecker::IgnoreWord(const QString& word) {
  ignored_.insert(word);
}

}  // namespace qbx
