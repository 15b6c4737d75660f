// Who a text message says it is from.

#pragma once

#include <QString>

namespace qbx {

/// What a sender of texts has to be; networks refuse or cut others. A number has 15 digits at most, behind a "+" or not (ITU-T E.164); a name has 11
/// characters at most (3GPP TS 23.040, section 9.1.2.5), and accents are not taken everywhere.
inline constexpr char kSmsSenderRule[] =
    "a name of 11 letters, digits and blanks at most, or a number of 15 digits at most";

/// Whether networks take a sender. An empty one is not set, which is no fault.
[[nodiscard]] bool IsSmsSender(const QString& sender);

/// Whether a sender is a number, to which a phone can reply.
[[nodiscard]] bool IsSmsNumber(const QString& sender);

}  // namespace qbx
