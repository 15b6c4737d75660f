// Decoding the bytes of RTF. For use in this folder only.

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringDecoder>
#include <map>

namespace qbx {

/// The code page of fonts such as Symbol. Their bytes are no letters and become U+F000 and up.
inline constexpr int kSymbolCodePage = 42;

/// The code page for \fcharset; 0 where the letter's own code page applies.
[[nodiscard]] int CodePageOfCharset(int charset);

/// Decodes bytes of any code page. An undefined byte becomes U+FFFD; an unknown code page is read as Windows-1252.
class CodePages {
 public:
  [[nodiscard]] QString Decode(const QByteArray& bytes, int codePage);

 private:
  std::map<int, QStringDecoder> decoders_;
};

}  // namespace qbx
