// Small helpers for text and for numbers in text.

#pragma once

#include <QString>

namespace qbx {

/// The text with every single quote doubled, for use between the quotes of an SQL statement.
[[nodiscard]] QString SqlDoubled(const QString& text);

/// The text as an SQL literal: single quotes doubled, and one added at each end.
[[nodiscard]] QString SqlQuoted(const QString& text);

/// The number at the start of the text: blanks, sign, digits, "." and an exponent. It does not depend on the locale.
/// \return 0 when there is no number; a number beyond the range of a double gives the largest one of its sign
[[nodiscard]] double LeadingNumber(const QString& text);

/// The number at the start of the text, rounded half to even. A number beyond 64 bits gives the nearest one that fits.
[[nodiscard]] qint64 LeadingInteger(const QString& text);

/// The shortest plain decimal form ("0.1", "1250", "-3.5") that reads back as the same number; "0" for infinity and
/// NaN.
[[nodiscard]] QString ShortestNumber(double number);

/// Whether both texts are equal without regard to case.
[[nodiscard]] bool EqualsNoCase(const QString& left, const QString& right);

/// The text without blanks (U+0020) at both ends. Tabs and line breaks stay.
[[nodiscard]] QString TrimBlanks(const QString& text);

/// The first `maxLength` characters (UTF-16 code units) of the text; one fewer where the cut would split a surrogate
/// pair.
[[nodiscard]] QString CutText(const QString& text, int maxLength);

}  // namespace qbx
