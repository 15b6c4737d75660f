// A text message as it goes out.

#pragma once

#include <QString>

namespace qbx {

/// A merged text as a run sends it: every line break as CR LF, then cut to 918 characters. Whatever counts, shows or sends a text takes it from here.
[[nodiscard]] QString SmsText(const QString& merged);

/// Characters of a text with its line breaks as CR LF, before it is cut.
[[nodiscard]] int SmsLength(const QString& text);

/// "Chars: 161 / 918 max, approx. 2 Credit(s)", for a text or its template.
[[nodiscard]] QString SmsCounterText(const QString& text);

/// What arrives of `SmsText`: without blanks at its ends, and with "?" for what the gateway's character set does not have.
[[nodiscard]] QString SmsAsSent(const QString& text);

/// The characters of a text that arrive as "?", each once, in its order.
[[nodiscard]] QString CharactersNotSent(const QString& text);

/// The characters that arrive but that a phone network has not in its basic alphabet (3GPP TS 23.038, section 6.2.1, with the extension table): a
/// text that holds one is counted by parts of 70 characters instead of 160. Each once, in the order of the text.
[[nodiscard]] QString CharactersOutsideGsm(const QString& text);

/// Whether a text or an e-mail says how to stop: "stop", "opt out" or "unsubscribe" as words of it. "Stop by" and "non-stop" are not meant.
[[nodiscard]] bool TellsHowToStop(const QString& text);

}  // namespace qbx
