#include "tds_server/bytes.h"

#include <cstring>

namespace qbx::tds {

quint8 ByteReader::Peek() const {
  if (AtEnd()) throw ProtocolError("the message ends too early");
  return static_cast<quint8>(bytes_[at_]);
}

quint64 ByteReader::Number(int bytes) {
  const QByteArrayView taken = Bytes(bytes);
  quint64 number = 0;
  for (int i = bytes - 1; i >= 0; --i)
    number = number << 8 | static_cast<quint8>(taken[i]);
  return number;
}

QByteArrayView ByteReader::Bytes(qsizetype count) {
  if (count < 0 || count > Left()) throw ProtocolError("the message ends too early");
  const QByteArrayView taken = bytes_.sliced(at_, count);
  at_ += count;
  return taken;
}

QString ByteReader::Text(qsizetype units) {
  const QByteArrayView taken = Bytes(units * 2);
  QString text(units, Qt::Uninitialized);
  std::memcpy(text.data(), taken.data(), static_cast<std::size_t>(taken.size()));
  return text;
}

ByteWriter& ByteWriter::Number(quint64 value, int bytes) {
  for (int i = 0; i < bytes; ++i, value >>= 8)
    bytes_.append(static_cast<char>(value));
  return *this;
}

ByteWriter& ByteWriter::BigEndian(quint64 value, int bytes) {
  for (int i = bytes - 1; i >= 0; --i)
    bytes_.append(static_cast<char>(value >> (8 * i)));
  return *this;
}

ByteWriter& ByteWriter::Bytes(QByteArrayView bytes) {
  bytes_.append(bytes);
  return *this;
}

ByteWriter& ByteWriter::Text(const QString& text) {
  return Bytes(QByteArrayView(reinterpret_cast<const char*>(text.utf16()), text.size() * 2));
}

ByteWriter& ByteWriter::ShortText(const QString& text) {
  const QString kept = text.left(0xFF);
  return U8(static_cast<unsigned>(kept.size())).Text(kept);
}

ByteWriter& ByteWriter::LongerText(const QString& text) {
  const QString kept = text.left(0x7FFF);
  return U16(static_cast<unsigned>(kept.size())).Text(kept);
}

QByteArray ByteWriter::Take(qsizetype count) {
  QByteArray taken = bytes_.left(count);
  bytes_.remove(0, count);
  return taken;
}

}  // namespace qbx::tds
