#include "settings/sms_sender.h"

#include <algorithm>

namespace qbx {

namespace {

constexpr qsizetype kLongestName = 11;
constexpr qsizetype kMostDigits = 15;

QStringView WithoutPlus(const QString& sender) {
  const QStringView all = sender;
  return all.startsWith(u'+') ? all.sliced(1) : all;
}

bool IsLatinDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

/// Most networks accept signs such as "&", so a name may hold them.
bool IsNameCharacter(QChar c) {
  return c >= u' ' && c <= u'~';
}

}  // namespace

bool IsSmsNumber(const QString& sender) {
  const QStringView digits = WithoutPlus(sender);
  return !digits.isEmpty() && std::ranges::all_of(digits, IsLatinDigit);
}

bool IsSmsSender(const QString& sender) {
  if (IsSmsNumber(sender)) return WithoutPlus(sender).size() <= kMostDigits;
  return sender.size() <= kLongestName && std::ranges::all_of(sender, IsNameCharacter);
}

}  // namespace qbx
