// The text message as it goes out.

#pragma once

#include <QString>

namespace qbx {

/// A merged text as a run sends it: every line break as CR LF, then cut to 918 characters. Counting, showing and
/// sending all use it.
[[nodiscard]] QString SmsText(const QString& merged);

/// The number of characters of a text with its line breaks as CR LF, before it is cut.
[[nodiscard]] int SmsLength(const QString& text);

/// "Chars: 161 / 918 max, approx. 2 Credit(s)", for a text or its template.
[[nodiscard]] QString SmsCounterText(const QString& text);

/// What the receiver gets of `SmsText`: without blanks at its ends, and with "?" for characters that the gateway's
/// character set lacks.
[[nodiscard]] QString SmsAsSent(const QString& text);

/// The characters of a text that arrive as "?", each once, in its order.
[[nodiscard]] QString CharactersNotSent(const QString& text);

/// The characters that arrive but are outside a phone network's basic alphabet (3GPP TS 23.038, section 6.2.1, with the
/// extension table), each once, in the order of the text. A text with one of them is counted in parts of 70 characters
/// instead of 160.
[[nodiscard]] QString CharactersOutsideGsm(const QString& text);

/// Whether a text or an e-mail says how to stop: it has "stop", "opt out" or "unsubscribe" as words. "Stop by" and
/// "non-stop" do not count.
[[nodiscard]] bool TellsHowToStop(const QString& text);

}  // namespace qbx
