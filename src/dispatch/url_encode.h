// Percent-encoding as the SMS gateway reads it.

#pragma once

#include <QString>

namespace qbx {

/// Trims the value and keeps ASCII letters and digits. Every other character becomes "%" and the two upper-case
/// hexadecimal digits of its Windows-1252 code, or "%3F" (the question mark) when that code page lacks it.
[[nodiscard]] QString URLEncode(const QString& value);

}  // namespace qbx
