// Random garages.

#pragma once

#include "consent/world.h"
#include "hostdb/random_source.h"

namespace qbx::consent {

/// \param customers  how many
[[nodiscard]] World MakeWorld(RandomSource& random, int customers);

}  // namespace qbx::consent
