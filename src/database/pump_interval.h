// How often events run during a call.

#pragma once

#include <chrono>

namespace qbx {

inline constexpr auto kPumpInterval = std::chrono::milliseconds(10);

}  // namespace qbx
