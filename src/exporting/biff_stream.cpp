#include "exporting/biff_stream.h"

#include <algorithm>

#include "exporting/export_parts.h"

namespace qbx {

namespace {

constexpr std::size_t kRecordHead = 4;

bool IsAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

BiffText ToBiffText(std::string_view utf8) {
  if (IsAscii(utf8)) return {.bytes = std::string(utf8)};
  const QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
  if (std::ranges::all_of(text, [](QChar c) { return c.unicode() < 0x100; }))
    return {.bytes = text.toLatin1().toStdString()};
  const auto* bytes = reinterpret_cast<const char*>(text.utf16());
  return {.bytes = std::string(bytes, static_cast<std::size_t>(text.size()) * 2), .characters = BiffCharacters::kUtf16};
}

BiffStream::BiffStream(CompoundFile& file) : file_(file) {
  buffer_.reserve(kFlushedBytes + kFlushedBytes / 4);
}

BiffStream& BiffStream::Begin(Biff record) {
  begun_ = buffer_.size();
  return U16(static_cast<quint16>(record)).U16(0);
}

BiffStream& BiffStream::Bytes(std::string_view bytes) {
  buffer_.append(bytes);
  return *this;
}

BiffStream& BiffStream::Zeros(std::size_t count) {
  buffer_.append(count, '\0');
  return *this;
}

BiffStream& BiffStream::Short(std::string_view utf8) {
  const BiffText text = ToBiffText(utf8);
  return U8(static_cast<quint32>(text.Length())).U8(static_cast<quint8>(text.characters)).Bytes(text.bytes);
}

BiffStream& BiffStream::Long(std::string_view utf8) {
  const BiffText text = ToBiffText(utf8);
  return U16(static_cast<quint32>(text.Length())).U8(static_cast<quint8>(text.characters)).Bytes(text.bytes);
}

void BiffStream::End() {
  const auto size = static_cast<quint16>(buffer_.size() - begun_ - kRecordHead);
  std::memcpy(&buffer_[begun_ + kRecordHead - sizeof size], &size, sizeof size);
  if (buffer_.size() >= kFlushedBytes) Flush();
}

void BiffStream::Replace(qint64 position, quint32 number) {
  Flush();
  std::string bytes;
  AppendNumber(bytes, number);
  file_.Replace(position, bytes);
}

void BiffStream::Flush() {
  file_.Append(buffer_);
  flushed_ += static_cast<qint64>(buffer_.size());
  buffer_.clear();
}

}  // namespace qbx
