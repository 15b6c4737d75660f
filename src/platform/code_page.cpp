#include "platform/code_page.h"

#include <QStringDecoder>
#include <algorithm>
#include <array>

namespace qbx {
namespace {

// The characters of the bytes 0x80 to 0x9F; all others are those of Latin-1.
constexpr std::array<char16_t, 32> kHigh = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                            0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr int kNone = -1;

int ByteOf(char16_t unit) {
  if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return unit;
  const auto found = std::find(kHigh.begin(), kHigh.end(), unit);
  return found == kHigh.end() ? kNone : 0x80 + static_cast<int>(found - kHigh.begin());
}

}  // namespace

QString DecodeWindows1252(const QByteArray& bytes) {
  QString text = QString::fromLatin1(bytes);
  for (QChar& character : text) {
    const char16_t unit = character.unicode();
    if (unit >= 0x80 && unit < 0xA0) character = QChar(kHigh[unit - 0x80]);
  }
  return text;
}

QByteArray EncodeWindows1252(const QString& text, char replacement) {
  QByteArray bytes;
  bytes.reserve(text.size());
  for (const QChar character : text) {
    const int byte = ByteOf(character.unicode());
    bytes.append(byte == kNone ? replacement : static_cast<char>(byte));
  }
  return bytes;
}

bool FitsWindows1252(const QString& text) {
  return std::all_of(text.begin(), text.end(), [](QChar character) { return ByteOf(character.unicode()) != kNone; });
}

QString DecodeUtf8OrWindows1252(const QByteArray& bytes) {
  if (!bytes.isValidUtf8()) return DecodeWindows1252(bytes);
  QStringDecoder decoder(QStringDecoder::Utf8);  // drops a byte-order mark by itself
  return decoder(bytes);
}

}  // namespace qbx
