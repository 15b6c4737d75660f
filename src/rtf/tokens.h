// Splitting RTF into tokens: groups, control words, text. For use in this folder only.

#pragma once

#include <QString>
#include <QStringView>

namespace qbx {

/// One piece of an RTF text. It points into that text.
struct RtfToken {
  enum class Kind {
    End,         ///< the end of the text
    GroupStart,  ///< {
    GroupEnd,    ///< }
    Word,        ///< \name or \name123; also a symbol such as \~, whose name is this one character
    Byte,        ///< \'hh, the byte in `number`
    Text,        ///< plain characters, and the escaped ones \\, \{ and \}
    Binary,      ///< the bytes after \bin123
  };
  Kind kind = Kind::End;
  QStringView text = {};  ///< the name of a word; characters; bytes, one a character
  int number = 0;         ///< of a word, 0 when it has none; a byte
  bool hasNumber = false;
};

/// Splits RTF into tokens. Every text is accepted: a damaged escape is skipped, line breaks between tokens are dropped,
/// and a number beyond 32 bits becomes the nearest that fits.
class RtfTokens {
 public:
  explicit RtfTokens(QStringView rtf) : rtf_(rtf) {}

  [[nodiscard]] RtfToken Next();

 private:
  RtfToken Escape();
  RtfToken Word();
  RtfToken Byte();

  QStringView rtf_;
  qsizetype at_ = 0;
};

/// A text without control characters (tabs stay) and without characters that have a meaning for QTextDocument.
[[nodiscard]] QString CleanedRtfText(QStringView text);

/// The value of a hexadecimal digit, -1 for anything else.
[[nodiscard]] int HexDigit(QChar unit);

}  // namespace qbx
