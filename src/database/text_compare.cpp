#include "database/text_compare.h"

#include <QChar>
#include <algorithm>
#include <array>
#include <cstring>

namespace qbx {
namespace {

constexpr std::array<unsigned char, 128> MakeFoldTable() {
  std::array<unsigned char, 128> table{};
  for (unsigned i = 0; i < 128; ++i)
    table[i] = static_cast<unsigned char>(i >= 'A' && i <= 'Z' ? i + 32 : i);
  return table;
}
constexpr auto kFold = MakeFoldTable();

/// Removes the next code point from the front. A malformed byte counts as itself.
char32_t NextFolded(std::string_view& text) {
  const auto first = static_cast<unsigned char>(text.front());
  const std::size_t length = first < 0x80 ? 1 : first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC0 ? 2 : 1;
  if (length == 1 || text.size() < length) {
    text.remove_prefix(1);
    return first < 0x80 ? kFold[first] : first;
  }
  char32_t code = first & (0xFFu >> (length + 1));
  for (std::size_t i = 1; i < length; ++i)
    code = (code << 6) | (static_cast<unsigned char>(text[i]) & 0x3Fu);
  text.remove_prefix(length);
  return QChar::toCaseFolded(code);
}

int CompareFolded(std::string_view left, std::string_view right) {
  while (!left.empty() && !right.empty()) {
    const char32_t a = NextFolded(left);
    const char32_t b = NextFolded(right);
    if (a != b) return a < b ? -1 : 1;
  }
  return left.empty() ? (right.empty() ? 0 : -1) : 1;
}

/// Number of bytes at the start that both texts share, counted in whole words.
std::size_t SameStart(const char* left, const char* right, std::size_t size) {
  std::size_t i = 0;
  for (; i + sizeof(quint64) <= size; i += sizeof(quint64)) {
    quint64 a = 0;
    quint64 b = 0;
    std::memcpy(&a, left + i, sizeof a);
    std::memcpy(&b, right + i, sizeof b);
    if (a != b) break;
  }
  return i;
}

/// Start of the character that contains the byte at `at`. Before that byte both texts are equal.
std::size_t CharacterStart(std::string_view left, std::string_view right, std::size_t at) {
  const auto continues = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; };
  while (at > 0 && (continues(left[at]) || continues(right[at])))
    --at;
  return at;
}

std::string_view WithoutTrailingBlanks(std::string_view text) {
  while (!text.empty() && text.back() == ' ')
    text.remove_suffix(1);
  return text;
}

}  // namespace

int CompareNoCase(std::string_view left, std::string_view right) {
  left = WithoutTrailingBlanks(left);
  right = WithoutTrailingBlanks(right);
  const std::size_t common = std::min(left.size(), right.size());
  for (std::size_t i = SameStart(left.data(), right.data(), common); i < common; ++i) {
    const auto a = static_cast<unsigned char>(left[i]);
    const auto b = static_cast<unsigned char>(right[i]);
    if ((a | b) >= 0x80) {
      const std::size_t start = CharacterStart(left, right, i);
      return CompareFolded(left.substr(start), right.substr(start));
    }
    if (kFold[a] != kFold[b]) return kFold[a] < kFold[b] ? -1 : 1;
  }
  return left.size() == right.size() ? 0 : (left.size() < right.size() ? -1 : 1);
}

quint64 FoldedStart(std::string_view text) {
  constexpr unsigned kBits = 64;
  quint64 start = 0;
  text = WithoutTrailingBlanks(text);
  for (unsigned shift = 8; shift <= kBits && !text.empty(); shift += 8) {
    if (const auto byte = static_cast<unsigned char>(text.front()); byte < 0x80) {
      start |= quint64{kFold[byte]} << (kBits - shift);
      text.remove_prefix(1);
      continue;
    }
    const char32_t code = NextFolded(text);
    start |= quint64{std::min<char32_t>(code, 0x80)} << (kBits - shift);
    if (code >= 0x80) break;  // letters beyond ASCII all look the same here, so what follows one must not count
  }
  return start;
}

std::string_view BehindStart(std::string_view text) {
  for (std::size_t i = 0; i < sizeof(quint64) && !text.empty(); ++i) {
    if (static_cast<unsigned char>(text.front()) < 0x80)
      text.remove_prefix(1);
    else
      (void)NextFolded(text);
  }
  return text;
}

bool StartsWithNoCase(std::string_view text, std::string_view start) {
  while (!text.empty() && !start.empty()) {
    if (NextFolded(text) != NextFolded(start)) return false;
  }
  return start.empty();
}

SoughtText::SoughtText(std::string_view text)
    : text_(text), lower_(static_cast<unsigned char>(text.front())), upper_(lower_) {
  const auto beyond = [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; };
  if (std::none_of(text.begin(), text.end(), beyond)) {
    for (const char byte : text)
      folded_ += static_cast<char>(kFold[static_cast<unsigned char>(byte)]);
  }
  if (beyond(text.front())) return;
  lower_ = kFold[lower_];
  if (lower_ >= 'a' && lower_ <= 'z') upper_ = static_cast<unsigned char>(lower_ - 32);
}

bool SoughtText::StartsAt(std::string_view text) const {
  for (std::size_t i = 1; i < folded_.size() && i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte >= 0x80) return StartsWithNoCase(text, text_);  // some letters fold to ASCII
    if (kFold[byte] != static_cast<unsigned char>(folded_[i])) return false;
  }
  return folded_.empty() ? StartsWithNoCase(text, text_) : text.size() >= folded_.size();
}

bool SoughtText::IsIn(std::string_view text) const {
  if (text.size() < folded_.size()) return false;
  const bool plain = lower_ < 0x80;
  for (std::size_t i = 0; i + folded_.size() <= text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool mayBegin = plain ? byte == lower_ || byte == upper_ : byte >= 0xC0;
    if (mayBegin && StartsAt(text.substr(i))) return true;
  }
  return false;
}

}  // namespace qbx
