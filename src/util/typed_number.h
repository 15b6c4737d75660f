// Numbers as people type them.

#pragma once

#include <QString>

namespace qbx {

/// The text with the groups of a number at its start joined: "80,000 miles" becomes "80000 miles". Groups are three
/// digits each, all separated by the same comma, blank, thin blank or no-break blank; the first may be shorter.
/// What is not grouped so stays as it is: "80,00", "1000,000".
[[nodiscard]] QString JoinDigitGroups(const QString& text);

/// The number at the start of the text, digit groups joined; 0 when there is none.
[[nodiscard]] double TypedNumber(const QString& text);

/// Whether the text is a number and nothing else.
[[nodiscard]] bool IsTypedNumber(const QString& text);

/// "80", as a number is told that was read from a text.
[[nodiscard]] QString TypedNumberText(const QString& text);

}  // namespace qbx
