// How often events run while a call is waited for.

#pragma once

#include <chrono>

namespace qbx {

inline constexpr auto kPumpInterval = std::chrono::milliseconds(10);

}  // namespace qbx
