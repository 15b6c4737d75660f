#include "util/typed_number.h"

#include <QRegularExpression>
#include <cmath>

#include "util/text.h"

namespace qbx {

QString JoinDigitGroups(const QString& text) {
  static const QRegularExpression kGroups(
      QStringLiteral("^(\\s*[-+]?)([0-9]{1,3}([, \\x{2009}\\x{00a0}\\x{202f}])[0-9]{3}(?:\\3[0-9]{3})*)(?![0-9])"));
  const QRegularExpressionMatch match = kGroups.match(text);
  if (!match.hasMatch()) return text;
  return match.captured(1) + match.captured(2).remove(match.captured(3)) + text.mid(match.capturedEnd(2));
}

double TypedNumber(const QString& text) {
  return LeadingNumber(JoinDigitGroups(text));
}

bool IsTypedNumber(const QString& text) {
  bool isNumber = false;
  const double number = JoinDigitGroups(text).trimmed().toDouble(&isNumber);
  return isNumber && std::isfinite(number);
}

QString TypedNumberText(const QString& text) {
  return ShortestNumber(TypedNumber(text));
}

}  // namespace qbx
