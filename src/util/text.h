// Small helpers for text and for numbers in text.

#pragma once

#include <QString>

namespace qbx {

/// The text with every single quote doubled, for use between the quotes of an SQL statement.
[[nodiscard]] QString SqlDoubled(const QString& text);

/// The text as an SQL literal: single quotes doubled and one added on each side.
[[nodiscard]] QString SqlQuoted(const QString& text);

/// The number at the start of the text, blanks in front of it passed over: sign, digits, "." and an exponent. Never
/// depends on the locale.
/// \return 0 when there is no number; a number beyond the range of a double gives the largest one of its sign
[[nodiscard]] double LeadingNumber(const QString& text);

/// The same as a whole number; a fraction rounds half to even, a number beyond 64 bits gives the nearest one that fits.
[[nodiscard]] qint64 LeadingInteger(const QString& text);

/// The shortest plain decimal form ("0.1", "1250", "-3.5") that reads back as the same number; "0" for what is no
/// finite number.
[[nodiscard]] QString ShortestNumber(double number);

/// Whether both are the same without regard to case.
[[nodiscard]] bool EqualsNoCase(const QString& left, const QString& right);

/// The text without blanks (U+0020) at both ends. Tabs and line breaks stay.
[[nodiscard]] QString TrimBlanks(const QString& text);

/// The first `maxLength` characters (UTF-16 code units) of the text; one less where the cut would leave half a
/// surrogate pair.
[[nodiscard]] QString CutText(const QString& text, int maxLength);

}  // namespace qbx
