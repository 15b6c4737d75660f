// Comparing text as the host's collation does.

#pragma once

#include <string_view>

namespace qbx {

/// Compares UTF-8 text without regard to case, by folded code point; fast while both are ASCII.
/// \return below, at or above zero
[[nodiscard]] int CompareNoCase(std::string_view left, std::string_view right);

}  // namespace qbx
