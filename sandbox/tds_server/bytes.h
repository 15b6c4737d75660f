// Numbers and texts as the wire has them: little-endian, UTF-16.

#pragma once

#include <QByteArray>
#include <QString>
#include <stdexcept>

namespace qbx::tds {

/// The received bytes break the protocol. The connection is given up.
class ProtocolError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Reads through bytes that it does not own. Every read throws ProtocolError when too few bytes are left.
class ByteReader {
 public:
  explicit ByteReader(QByteArrayView bytes) : bytes_(bytes) {}

  [[nodiscard]] bool AtEnd() const { return at_ >= bytes_.size(); }
  [[nodiscard]] qsizetype Left() const { return bytes_.size() - at_; }
  [[nodiscard]] quint8 Peek() const;

  quint8 U8() { return static_cast<quint8>(Number(1)); }
  quint16 U16() { return static_cast<quint16>(Number(2)); }
  quint32 U32() { return static_cast<quint32>(Number(4)); }
  qint32 I32() { return static_cast<qint32>(Number(4)); }
  quint64 U64() { return Number(8); }
  /// An unsigned number of 1 to 8 bytes.
  quint64 Number(int bytes);

  QByteArrayView Bytes(qsizetype count);
  void Skip(qsizetype count) { (void)Bytes(count); }
  QString Text(qsizetype units);
  QString ShortText() { return Text(U8()); }    ///< after its length in one byte
  QString LongerText() { return Text(U16()); }  ///< after its length in two bytes

 private:
  QByteArrayView bytes_;
  qsizetype at_ = 0;
};

/// Appends bytes.
class ByteWriter {
 public:
  ByteWriter& U8(unsigned value) { return Number(value, 1); }
  ByteWriter& U16(unsigned value) { return Number(value, 2); }
  ByteWriter& U32(quint32 value) { return Number(value, 4); }
  ByteWriter& I32(qint32 value) { return Number(static_cast<quint32>(value), 4); }
  ByteWriter& U64(quint64 value) { return Number(value, 8); }
  ByteWriter& Number(quint64 value, int bytes);
  ByteWriter& BigEndian(quint64 value, int bytes);

  ByteWriter& Bytes(QByteArrayView bytes);
  ByteWriter& Text(const QString& text);        ///< without its length
  ByteWriter& ShortText(const QString& text);   ///< after its length in one byte; a longer text is cut
  ByteWriter& LongerText(const QString& text);  ///< after its length in two bytes
  /// What `write` appends, after the number of its bytes in two bytes.
  template <typename Write>
  ByteWriter& Sized(const Write& write);

  [[nodiscard]] const QByteArray& Data() const { return bytes_; }
  [[nodiscard]] qsizetype Size() const { return bytes_.size(); }
  /// Removes and returns the first bytes.
  QByteArray Take(qsizetype count);

 private:
  QByteArray bytes_;
};

template <typename Write>
ByteWriter& ByteWriter::Sized(const Write& write) {
  ByteWriter inner;
  write(inner);
  return U16(static_cast<unsigned>(inner.Size())).Bytes(inner.Data());
}

}  // namespace qbx::tds
