// Dates as people type them.

#pragma once

#include <QDate>
#include <QString>

namespace qbx {

/// The latest date that a date box takes.
inline constexpr QDate kLatestTypedDate = QDate::fromJulianDay(2488069);  // 31 December 2099

/// Reads day, month and year in this order, separated by "/", ".", "-" or blanks, or without separators in six or eight
/// digits. The form yyyy-mm-dd is read, too. A year of two digits is 1950 to 2049.
/// \return an invalid date when the text is empty, is no date, or is later than `kLatestTypedDate`
[[nodiscard]] QDate ParseTypedDate(const QString& text);

}  // namespace qbx
