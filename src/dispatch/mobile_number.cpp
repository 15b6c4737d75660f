#include "dispatch/mobile_number.h"

#include "util/text.h"

namespace qbx {

namespace {

constexpr int kFirstRemarkBracket = 5;
constexpr int kShortestCleaned = 6;

bool IsLatinCapital(QChar c) {
  return c >= QLatin1Char('A') && c <= QLatin1Char('Z');
}

}  // namespace

bool CanBeTexted(const QString& typed) {
  return typed.size() >= kShortestMobile && CleanMobileNumber(typed).has_value();
}

std::optional<QString> CleanMobileNumber(const QString& typed) {
  QString number = TrimBlanks(typed.toUpper());
  number.remove(QLatin1Char(' '));
  for (const char stop : {';', ',', '/'}) {
    const qsizetype at = number.indexOf(QLatin1Char(stop));
    if (at >= 0) number.truncate(at);
  }
  const qsizetype bracket = number.indexOf(QLatin1Char('('), kFirstRemarkBracket);
  if (bracket >= 0) number.truncate(bracket);
  number.removeIf(IsLatinCapital);
  if (number.size() < kShortestCleaned) return std::nullopt;
  return number;
}

}  // namespace qbx
