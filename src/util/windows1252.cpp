#include "util/windows1252.h"

#include <algorithm>
#include <array>

namespace qbx {

namespace {

/// Characters of the codes 80 to 9F. All other codes are those of ISO 8859-1.
constexpr std::array<char16_t, 32> kUpperControls = {0x20ac, 0x0081, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021,
                                                     0x02c6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008d, 0x017d, 0x008f,
                                                     0x0090, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022, 0x2013, 0x2014,
                                                     0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0x009d, 0x017e, 0x0178};

constexpr int kFirstUpperControl = 0x80;
constexpr int kLastUpperControl = 0x9f;

char EncodeCharacter(char16_t character) {
  const bool sameCode = character < kFirstUpperControl || (character > kLastUpperControl && character <= 0xff);
  if (sameCode) return static_cast<char>(character);
  const auto* const found = std::find(kUpperControls.begin(), kUpperControls.end(), character);
  if (found == kUpperControls.end()) return '?';
  return static_cast<char>(kFirstUpperControl + (found - kUpperControls.begin()));
}

}  // namespace

QByteArray ToWindows1252(const QString& text) {
  QByteArray bytes;
  bytes.reserve(text.size());
  for (qsizetype position = 0; position < text.size(); ++position) {
    const bool pair =
        text[position].isHighSurrogate() && position + 1 < text.size() && text[position + 1].isLowSurrogate();
    bytes += pair ? '?' : EncodeCharacter(text[position].unicode());
    if (pair) ++position;
  }
  return bytes;
}

QString FromWindows1252(const QByteArray& bytes) {
  QString text;
  text.reserve(bytes.size());
  for (const char byte : bytes) {
    const int code = static_cast<unsigned char>(byte);
    const bool upperControl = code >= kFirstUpperControl && code <= kLastUpperControl;
    text += upperControl ? QChar(kUpperControls[static_cast<std::size_t>(code - kFirstUpperControl)]) : QChar(code);
  }
  return text;
}

QString FromFileBytes(const QByteArray& bytes) {
  return bytes.isValidUtf8() ? QString::fromUtf8(bytes) : FromWindows1252(bytes);
}

}  // namespace qbx
