// Bytes of RTF as text. Used inside this folder only.

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringDecoder>
#include <map>

namespace qbx {

/// The code page of fonts such as Symbol, whose bytes are no letters: they become U+F000 and up.
inline constexpr int kSymbolCodePage = 42;

/// The code page that goes with \fcharset, 0 where the letter's own applies.
[[nodiscard]] int CodePageOfCharset(int charset);

/// Decodes bytes of any code page. A byte that means nothing becomes U+FFFD; a code page that nobody knows is taken for
/// Windows-1252.
class CodePages {
 public:
  [[nodiscard]] QString Decode(const QByteArray& bytes, int codePage);

 private:
  std::map<int, QStringDecoder> decoders_;
};

}  // namespace qbx
