#include "rtf/tokens.h"

#include <algorithm>
#include <limits>

namespace qbx {
namespace {

bool IsLetter(QChar unit) {
  return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

bool IsDigit(QChar unit) {
  return unit >= u'0' && unit <= u'9';
}

bool EndsText(QChar unit) {
  return unit == u'\\' || unit == u'{' || unit == u'}' || unit == u'\r' || unit == u'\n';
}

}  // namespace

int HexDigit(QChar unit) {
  if (IsDigit(unit)) return unit.unicode() - u'0';
  if (unit >= u'a' && unit <= u'f') return unit.unicode() - u'a' + 10;
  if (unit >= u'A' && unit <= u'F') return unit.unicode() - u'A' + 10;
  return -1;
}

QString CleanedRtfText(QStringView text) {
  QString cleaned;
  cleaned.reserve(text.size());
  for (QChar unit : text) {
    const char16_t code = unit.unicode();
    if (code == u'\u2029') unit = u'\u2028';
    if ((code < 0x20 && code != u'\t') || code == 0x7F || code == 0xFDD0 || code == 0xFDD1 || code == 0xFFFC) continue;
    cleaned += unit;
  }
  return cleaned;
}

RtfToken RtfTokens::Next() {
  while (at_ < rtf_.size() && (rtf_[at_] == u'\r' || rtf_[at_] == u'\n'))
    ++at_;
  if (at_ >= rtf_.size()) return {};
  const QChar first = rtf_[at_];
  if (first == u'{' || first == u'}') {
    ++at_;
    return {first == u'{' ? RtfToken::Kind::GroupStart : RtfToken::Kind::GroupEnd};
  }
  if (first == u'\\') return Escape();

  const qsizetype start = at_;
  while (at_ < rtf_.size() && !EndsText(rtf_[at_]))
    ++at_;
  return {RtfToken::Kind::Text, rtf_.sliced(start, at_ - start)};
}

RtfToken RtfTokens::Escape() {
  if (++at_ >= rtf_.size()) return {};
  const QChar unit = rtf_[at_];
  if (IsLetter(unit)) return Word();
  const qsizetype start = at_++;
  if (unit == u'\'') return Byte();
  if (unit == u'\\' || unit == u'{' || unit == u'}') return {RtfToken::Kind::Text, rtf_.sliced(start, 1)};
  if (unit == u'\r' || unit == u'\n') {
    if (unit == u'\r' && at_ < rtf_.size() && rtf_[at_] == u'\n') ++at_;
    return {RtfToken::Kind::Word, u"par"};
  }
  return {RtfToken::Kind::Word, unit == u'\t' ? QStringView(u"tab") : rtf_.sliced(start, 1)};
}

RtfToken RtfTokens::Word() {
  const qsizetype start = at_;
  while (at_ < rtf_.size() && IsLetter(rtf_[at_]))
    ++at_;
  RtfToken word{RtfToken::Kind::Word, rtf_.sliced(start, at_ - start)};

  const bool negative = at_ + 1 < rtf_.size() && rtf_[at_] == u'-' && IsDigit(rtf_[at_ + 1]);
  if (negative) ++at_;
  qint64 number = 0;
  for (; at_ < rtf_.size() && IsDigit(rtf_[at_]); ++at_) {
    number = std::min<qint64>(number * 10 + (rtf_[at_].unicode() - u'0'), std::numeric_limits<int>::max());
    word.hasNumber = true;
  }
  word.number = static_cast<int>(negative ? -number : number);
  if (at_ < rtf_.size() && rtf_[at_] == u' ') ++at_;

  if (word.text != u"bin") return word;
  const qsizetype length = std::clamp<qsizetype>(word.number, 0, rtf_.size() - at_);
  at_ += length;
  return {RtfToken::Kind::Binary, rtf_.sliced(at_ - length, length)};
}

RtfToken RtfTokens::Byte() {
  int byte = 0;
  for (int digits = 0; digits < 2 && at_ < rtf_.size() && HexDigit(rtf_[at_]) >= 0; ++digits, ++at_)
    byte = byte * 16 + HexDigit(rtf_[at_]);
  return {RtfToken::Kind::Byte, {}, byte};
}

}  // namespace qbx
