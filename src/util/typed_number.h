// Numbers as people type them.

#pragma once

#include <QString>

namespace qbx {

/// The text with the digit groups of the number at its start joined: "80,000 miles" becomes "80000 miles". A group has
/// three digits; the first may be shorter. All groups are separated by the same character: a comma, blank, thin blank
/// or no-break blank. Any other grouping stays as it is: "80,00", "1000,000".
[[nodiscard]] QString JoinDigitGroups(const QString& text);

/// The number at the start of the text, digit groups joined; 0 when there is none.
[[nodiscard]] double TypedNumber(const QString& text);

/// Whether the text is a number and nothing else.
[[nodiscard]] bool IsTypedNumber(const QString& text);

/// The number of a text in its shortest form, such as "80".
[[nodiscard]] QString TypedNumberText(const QString& text);

}  // namespace qbx
