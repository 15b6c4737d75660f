#include "results/mobile_number.h"

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

QString PhoneOf(const QString& mobile) {
  QString number = CleanMobileNumber(mobile).value_or(QString());
  if (number.startsWith(u'+')) number.replace(0, 1, QStringLiteral("00"));
  number.removeIf([](QChar c) { return c < u'0' || c > u'9'; });
  const QLatin1String country("0044");
  if (!number.startsWith(country)) return number;
  number.remove(0, country.size());
  return number.startsWith(u'0') ? number : u'0' + number;
}

}  // namespace qbx
