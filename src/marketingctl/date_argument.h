// Dates on the command line: a day, or a word for one.

#pragma once

#include <QDate>
#include <string>

namespace qbx::ctl {

/// A day written yyyy-mm-dd.
/// \param flag  named when the text is none
/// \throws CLI::ValidationError, which says how many days the month has when that is what is wrong
[[nodiscard]] QDate DayArgument(const char* flag, const std::string& text);

/// The same, or a day relative to another: "today", "month-start" and "month-end" (the first and the last day of its month), each with a
/// distance behind it, or a distance alone: "+14d", "-2w", "+1m", "-2y". "month-end+1m" is the last day of the next month. The day is one that a
/// query takes, in 1990 or later.
[[nodiscard]] QDate DateArgument(const char* flag, const std::string& text, const QDate& today);

}  // namespace qbx::ctl
