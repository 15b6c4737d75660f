// Mobile numbers as people type them.

#pragma once

#include <QString>
#include <optional>

namespace qbx {

/// Characters that a row's mobile field needs before a send is tried at all.
inline constexpr int kShortestMobile = 9;

/// Whether a run tries to send a text to what was typed.
[[nodiscard]] bool CanBeTexted(const QString& typed);

/// Reduces a typed number to what the gateway takes: no blanks, no letters, nothing from the first ";", "," or "/" on,
/// nor from a "(" behind the fifth character ("07700 900123 (work)").
/// \return nothing when fewer than six characters remain
[[nodiscard]] std::optional<QString> CleanMobileNumber(const QString& typed);

/// A mobile number by which two rows are the same phone: cleaned as for sending, its digits alone, +44 and 0044 as 0. Empty for none.
[[nodiscard]] QString PhoneOf(const QString& mobile);

}  // namespace qbx
