// The cost of a text.

#pragma once

namespace qbx {

/// The most characters of a text that a mailshot sends: six concatenated segments.
inline constexpr int kMaxSmsLength = 918;

/// Credits for one text. A single GSM 03.38 segment holds 160 characters, a segment of a concatenated text 153 (GSM
/// 03.40, user data header).
/// \param length      characters, at least 0
/// \param perMessage  credits for one segment
/// \return `perMessage` up to 160 characters, otherwise `perMessage` for each started 153
[[nodiscard]] constexpr int SMSCreditsFor(int length, int perMessage) {
  constexpr int kSingle = 160;
  constexpr int kConcatenated = 153;
  if (length <= kSingle) return perMessage;
  return (length + kConcatenated - 1) / kConcatenated * perMessage;
}

}  // namespace qbx
