// Comparing text as the host's collation does.

#pragma once

#include <QtGlobal>
#include <string_view>

namespace qbx {

/// Compares UTF-8 text without regard to case and to blanks at its end, by folded code point; fast while both are ASCII.
/// \return below, at or above zero
[[nodiscard]] int CompareNoCase(std::string_view left, std::string_view right);

/// The first characters of a text, folded and packed: where two texts differ in this, the smaller comes first; where they
/// do not, only CompareNoCase knows.
[[nodiscard]] quint64 FoldedStart(std::string_view text);

/// Whether a text starts with another, without regard to case.
[[nodiscard]] bool StartsWithNoCase(std::string_view text, std::string_view start);

}  // namespace qbx
