#include "marketingctl/date_argument.h"

#include <CLI/CLI.hpp>
#include <QLocale>
#include <QRegularExpression>

#include "queries/date_check.h"

namespace qbx::ctl {

namespace {

const QLatin1String kForms("a date is written yyyy-mm-dd, such as 2026-01-31");
const QLatin1String kRelativeForms(
    ", or today, +14d, -2w, +1m, -2y, month-start or month-end, these also with a distance: month-end+1m");

[[noreturn]] void NoDate(const char* flag, const QString& what) {
  throw CLI::ValidationError(std::string(flag) + ": " + what.toStdString());
}

/// "June has 30 days"; for February with the year.
QString LengthOfMonth(int year, int month) {
  constexpr int kFebruary = 2;
  const QString name = QLocale::c().monthName(month);
  const QString which = month == kFebruary ? QStringLiteral("%1 %2").arg(name).arg(year) : name;
  return QStringLiteral("%1 has %2 days").arg(which).arg(QDate(year, month, 1).daysInMonth());
}

/// \return an invalid day when the text is not written in this form
QDate WrittenDay(const char* flag, const QString& text) {
  static const QRegularExpression form(QStringLiteral("^([0-9]{4})-([0-9]{2})-([0-9]{2})$"));
  const QRegularExpressionMatch match = form.match(text);
  if (!match.hasMatch()) return {};
  const int year = match.captured(1).toInt();
  const int month = match.captured(2).toInt();
  const QDate day(year, month, match.captured(3).toInt());
  if (day.isValid()) return day;
  if (!QDate(year, month, 1).isValid()) NoDate(flag, QStringLiteral("there is no month %1").arg(match.captured(2)));
  NoDate(flag, QStringLiteral("there is no %1: %2").arg(text, LengthOfMonth(year, month)));
}

QDate Moved(const QDate& day, int distance, QChar unit) {
  constexpr int kDaysOfWeek = 7;
  switch (unit.unicode()) {
    case u'd':
      return day.addDays(distance);
    case u'w':
      return day.addDays(qint64{kDaysOfWeek} * distance);
    case u'm':
      return day.addMonths(distance);
    default:
      return day.addYears(distance);
  }
}

/// \return an invalid day when the text is not written in this form
QDate RelativeDay(const QString& text, const QDate& today) {
  static const QRegularExpression form(QStringLiteral("^(today|month-start|month-end)?(?:([+-][0-9]{1,5})([dwmy]))?$"));
  const QRegularExpressionMatch match = form.match(text.toLower());
  if (text.isEmpty() || !match.hasMatch()) return {};
  const QString anchor = match.captured(1);
  const int distance = match.captured(2).toInt();
  const QChar unit = match.captured(3).isEmpty() ? QChar(u'd') : match.captured(3).front();
  if (!anchor.startsWith(QStringLiteral("month"))) return Moved(today, distance, unit);
  // Months and years count from the month, so that the end of a month stays the end of a month. Days and weeks count
  // from the day.
  const bool byMonths = unit == u'm' || unit == u'y';
  const QDate first(today.year(), today.month(), 1);
  const QDate month = byMonths ? Moved(first, distance, unit) : first;
  const QDate day = anchor == QStringLiteral("month-end") ? month.addDays(month.daysInMonth() - 1) : month;
  return byMonths ? day : Moved(day, distance, unit);
}

}  // namespace

QDate DayArgument(const char* flag, const std::string& text) {
  const QDate day = WrittenDay(flag, QString::fromStdString(text));
  if (!day.isValid()) NoDate(flag, kForms);
  return day;
}

QDate DateArgument(const char* flag, const std::string& text, const QDate& today) {
  const QString typed = QString::fromStdString(text);
  QDate day = WrittenDay(flag, typed);
  if (!day.isValid()) day = RelativeDay(typed, today);
  if (!day.isValid()) NoDate(flag, kForms + kRelativeForms);
  QueryOptions options{.dteDate = {day, day}};
  if (!CheckDates(options)) NoDate(flag, typed + QStringLiteral(" is before 1990, where the dates of a query begin"));
  return day;
}

}  // namespace qbx::ctl
