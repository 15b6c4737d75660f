#include "util/date_text.h"

namespace qbx {

namespace {

QString DayFormat() {
  return QStringLiteral("dd/MM/yyyy");
}

}  // namespace

QString DayText(const QDate& day) {
  return day.toString(DayFormat());
}

QString MinuteText(const QDateTime& time) {
  return time.toString(DayFormat() + QLatin1String(" HH:mm"));
}

QString SecondText(const QDateTime& time) {
  return time.toString(DayFormat() + QLatin1String(" HH:mm:ss"));
}

QDate ReadDayText(const QString& text) {
  return QDate::fromString(text, DayFormat());
}

}  // namespace qbx
