#include "settings/run_key.h"

#include <QRandomGenerator>
#include <QRegularExpression>

#include "util/text.h"

namespace qbx {

namespace {

constexpr int kMaxRunKey = 36;
constexpr int kCentury = 2000;

}  // namespace

QString MakeRunKey(const QString& user, const QDateTime& now) {
  QRandomGenerator random(static_cast<quint32>(now.toMSecsSinceEpoch()));
  const QString time = now.toString(QStringLiteral("ddMMyy-HHmmss"));
  return CutText(QStringLiteral("%1-%2-").arg(user, time) + QString::number(random.bounded(99)), kMaxRunKey);
}

std::optional<QDate> DayOfRunKey(const QString& key) {
  static const QRegularExpression form(QStringLiteral("-(\\d\\d)(\\d\\d)(\\d\\d)-\\d{6}-\\d*$"));
  const QRegularExpressionMatch match = form.match(key);
  const QDate day(kCentury + match.captured(3).toInt(), match.captured(2).toInt(), match.captured(1).toInt());
  return match.hasMatch() && day.isValid() ? std::optional(day) : std::nullopt;
}

}  // namespace qbx
