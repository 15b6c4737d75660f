// The sender of a text message.

#pragma once

#include <QString>

namespace qbx {

/// The rule for senders of texts; networks refuse or cut others. A number has at most 15 digits, after an optional "+"
/// (ITU-T E.164). A name has at most 11 characters (3GPP TS 23.040, section 9.1.2.5); some networks refuse accents.
inline constexpr char kSmsSenderRule[] =
    "a name of 11 letters, digits and blanks at most, or a number of 15 digits at most";

/// Whether networks accept a sender. An empty sender is not set, which is allowed.
[[nodiscard]] bool IsSmsSender(const QString& sender);

/// Whether a sender is a number, which the receiver can reply to.
[[nodiscard]] bool IsSmsNumber(const QString& sender);

}  // namespace qbx
