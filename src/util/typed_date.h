// Dates as people type them.

#pragma once

#include <QDate>
#include <QString>

namespace qbx {

/// The latest date that a date box takes.
inline constexpr QDate kLatestTypedDate = QDate::fromJulianDay(2488069);  // 31 December 2099

/// Reads day, month and year in that order, separated by "/", ".", "-" or blanks or written without a separator in six or eight digits
/// (year first also when written yyyy-mm-dd). A year of two digits is 1950 to 2049.
/// \return an invalid date when the text is empty, is no date, or lies after `kLatestTypedDate`
[[nodiscard]] QDate ParseTypedDate(const QString& text);

}  // namespace qbx
