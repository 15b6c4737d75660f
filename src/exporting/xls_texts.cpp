#include "exporting/xls_texts.h"

#include <algorithm>
#include <functional>

namespace qbx {

namespace {

constexpr std::size_t kLongestRemembered = 64;

bool IsHighSurrogate(const char* utf16) {
  return (static_cast<unsigned char>(utf16[1]) & 0xFC) == 0xD8;
}

}  // namespace

TextNumbers::Numbered TextNumbers::Of(std::string_view text) {
  if (text.size() > kLongestRemembered) return {count_++, true};
  Remembered& place = remembered_[std::hash<std::string_view>{}(text) % kRemembered];
  if (place.text == text) return {place.number, false};
  place.text.assign(text);
  place.number = count_++;
  return {place.number, true};
}

TextTable::TextTable(BiffStream& out) : out_(out) {
  out_.Begin(Biff::kSst);
  counts_ = out_.Position();
  out_.Zeros(bytes_);
}

void TextTable::Add(std::string_view text) {
  ++cells_;
  if (numbers_.Of(text).isNew) Write(ToBiffText(text));
}

/// A long text continues in the next record, which repeats the encoding of the characters. A text's header and first
/// character stay in one record, and so do the two halves of a surrogate pair.
void TextTable::Write(const BiffText& text) {
  constexpr std::size_t kHead = 3;
  constexpr std::size_t kLargestCharacter = 4;
  const std::size_t size = text.CharacterBytes();
  if (Room() < kHead + kLargestCharacter) Continue();
  out_.U16(static_cast<quint32>(text.Length())).U8(static_cast<quint8>(text.characters));
  bytes_ += kHead;
  std::string_view left = text.bytes;
  while (true) {
    std::size_t part = std::min(left.size(), Room() / size * size);
    if (size == 2 && part < left.size() && IsHighSurrogate(&left[part - 2])) part -= 2;
    out_.Bytes(left.substr(0, part));
    bytes_ += part;
    left.remove_prefix(part);
    if (left.empty()) return;
    Continue();
    out_.U8(static_cast<quint8>(text.characters));
    ++bytes_;
  }
}

void TextTable::Continue() {
  out_.End();
  out_.Begin(Biff::kContinue);
  bytes_ = 0;
}

void TextTable::Finish() {
  out_.End();
  out_.Replace(counts_, cells_);
  out_.Replace(counts_ + 4, numbers_.Count());
}

}  // namespace qbx
