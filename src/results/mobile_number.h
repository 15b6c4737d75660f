// Mobile numbers as people type them.

#pragma once

#include <QString>
#include <optional>

namespace qbx {

/// The least length of a row's mobile number; a shorter one is never tried.
inline constexpr int kShortestMobile = 9;

/// Whether a run tries to send a text to this number.
[[nodiscard]] bool CanBeTexted(const QString& typed);

/// Reduces a typed number to what the gateway accepts: no blanks, no letters, nothing from the first ";", "," or "/"
/// on, and nothing from a "(" after the fifth character on ("07700 900123 (work)").
/// \return nothing when fewer than six characters remain
[[nodiscard]] std::optional<QString> CleanMobileNumber(const QString& typed);

/// A form of a mobile number that is equal for the same phone: cleaned as for sending, digits only, with +44 and 0044
/// as 0. Empty when there is no number.
[[nodiscard]] QString PhoneOf(const QString& mobile);

}  // namespace qbx
