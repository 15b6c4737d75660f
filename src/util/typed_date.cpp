#include "util/typed_date.h"

#include <QRegularExpression>
#include <QStringList>

namespace qbx {
namespace {

constexpr int kPivotYear = 50;  // years of two digits below this one belong to this century

QStringList Digits(const QString& text) {
  static const QRegularExpression separators(QStringLiteral("[/.\\-\\s]+"));
  QStringList parts = text.split(separators, Qt::SkipEmptyParts);
  if (parts.size() != 1 || (text.size() != 6 && text.size() != 8)) return parts;
  return {text.left(2), text.mid(2, 2), text.mid(4)};
}

int Year(const QString& digits) {
  const int year = digits.toInt();
  if (digits.size() > 2) return year;
  return year + (year < kPivotYear ? 2000 : 1900);
}

}  // namespace

QDate ParseTypedDate(const QString& text) {
  QStringList parts = Digits(text.trimmed());
  if (parts.size() != 3) return {};
  for (const QString& part : parts) {
    static const QRegularExpression number(QStringLiteral("^[0-9]{1,4}$"));
    if (!number.match(part).hasMatch()) return {};
  }
  if (parts[0].size() == 4) parts.swapItemsAt(0, 2);
  if (parts[2].size() == 3) return {};
  const QDate date(Year(parts[2]), parts[1].toInt(), parts[0].toInt());
  return date.isValid() && date <= kLatestTypedDate ? date : QDate();
}

}  // namespace qbx
