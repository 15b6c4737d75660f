#include "util/base64_value.h"

#include <QStringDecoder>

namespace qbx {

namespace {

constexpr int kLineLength = 76;

}  // namespace

QString cBase64::BASE64_EncodeEx(const QByteArray& bytes) {
  const QString encoded = QString::fromLatin1(bytes.toBase64());
  QString lines;
  for (qsizetype start = 0; start < encoded.size(); start += kLineLength) {
    if (start > 0) lines += QLatin1String("\r\n");
    lines += encoded.mid(start, kLineLength);
  }
  return lines;
}

std::optional<QByteArray> cBase64::BASE64_DecodeEx(const QString& encoded) {
  QByteArray packed;
  packed.reserve(encoded.size());
  for (const QChar character : encoded) {
    if (character == u'\r' || character == u'\n' || character == u' ' || character == u'\t') continue;
    if (character.unicode() > 0x7f) return std::nullopt;
    packed += static_cast<char>(character.unicode());
  }
  const auto result = QByteArray::fromBase64Encoding(packed, QByteArray::AbortOnBase64DecodingErrors);
  // The decoder tolerates missing padding and bits set after the last byte; encoding the result again finds both.
  if (!result || result.decoded.toBase64() != packed) return std::nullopt;
  return result.decoded;
}

QString cBase64::BASE64_Encode(const QString& text) {
  return BASE64_EncodeEx(text.toUtf8());
}

std::optional<QString> cBase64::BASE64_Decode(const QString& encoded) {
  const std::optional<QByteArray> bytes = BASE64_DecodeEx(encoded);
  if (!bytes) return std::nullopt;
  QStringDecoder decoder(QStringDecoder::Utf8);
  QString text = decoder(*bytes);
  if (decoder.hasError()) return std::nullopt;
  return text;
}

std::optional<QString> ReadBase64Value(const QString& stored) {
  const QLatin1String marker(kBase64Marker);
  if (!stored.startsWith(marker)) return stored;
  return cBase64::BASE64_Decode(stored.mid(marker.size()));
}

QString MakeBase64Value(const QString& value) {
  return QLatin1String(kBase64Marker) + cBase64::BASE64_Encode(value);
}

}  // namespace qbx
