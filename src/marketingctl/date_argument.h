// Dates on the command line: a day, or a word for one.

#pragma once

#include <QDate>
#include <string>

namespace qbx::ctl {

/// A day written yyyy-mm-dd.
/// \param flag  named in the error
/// \throws CLI::ValidationError when the text is no day; for a day beyond the end of a month it says how many days the
///         month has
[[nodiscard]] QDate DayArgument(const char* flag, const std::string& text);

/// The same, or a day relative to today: "today", "month-start" and "month-end" (the first and last day of the month),
/// each with or without a distance behind it, or a distance alone: "+14d", "-2w", "+1m", "-2y". "month-end+1m" is the
/// last day of the next month. The day must be one that a query takes: in 1990 or later.
[[nodiscard]] QDate DateArgument(const char* flag, const std::string& text, const QDate& today);

}  // namespace qbx::ctl
