// Dates as the user reads them: day, month, year, whatever the locale.

#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>

namespace qbx {

// The text is empty for an invalid date.

/// "dd/mm/yyyy"
[[nodiscard]] QString DayText(const QDate& day);
/// "dd/mm/yyyy hh:mm"
[[nodiscard]] QString MinuteText(const QDateTime& time);
/// "dd/mm/yyyy hh:mm:ss"
[[nodiscard]] QString SecondText(const QDateTime& time);

/// \return an invalid date when the text is not "dd/mm/yyyy"
[[nodiscard]] QDate ReadDayText(const QString& text);

}  // namespace qbx
