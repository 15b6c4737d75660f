// The first look at RTF: groups, control words, text. Used inside this folder only.

#pragma once

#include <QString>
#include <QStringView>

namespace qbx {

/// One piece of an RTF text. It points into the text that it was read from.
struct RtfToken {
  enum class Kind {
    End,         ///< of the whole text
    GroupStart,  ///< {
    GroupEnd,    ///< }
    Word,        ///< \name or \name123; also a symbol such as \~, whose name is that one character
    Byte,        ///< \'hh, the byte in `number`
    Text,        ///< characters as they are, and the escaped ones \\, \{ and \}
    Binary,      ///< what stands behind \bin123
  };
  Kind kind = Kind::End;
  QStringView text = {};  ///< name of a word; characters; bytes, one a character
  int number = 0;         ///< of a word, 0 where none stands; a byte
  bool hasNumber = false;
};

/// Cuts RTF into tokens. Takes anything: a damaged escape is passed over, line breaks between tokens are dropped, and a
/// number beyond 32 bits becomes the nearest that fits.
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

/// A text without control characters (tabs stay) and without those that mean something to a QTextDocument itself.
[[nodiscard]] QString CleanedRtfText(QStringView text);

/// Value of a hexadecimal digit, -1 for anything else.
[[nodiscard]] int HexDigit(QChar unit);

}  // namespace qbx
