#include "dispatch/url_encode.h"

#include "util/text.h"
#include "util/windows1252.h"

namespace qbx {

namespace {

bool IsPlain(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

}  // namespace

QString URLEncode(const QString& value) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  const QByteArray bytes = ToWindows1252(TrimBlanks(value));
  QByteArray encoded;
  encoded.reserve(bytes.size() * 3);
  for (const char c : bytes) {
    if (IsPlain(c)) {
      encoded.append(c);
      continue;
    }
    const auto code = static_cast<unsigned char>(c);
    encoded.append('%').append(kHex[code >> 4]).append(kHex[code & 15]);
  }
  return QString::fromLatin1(encoded);
}

}  // namespace qbx
