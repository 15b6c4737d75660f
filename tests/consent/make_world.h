// Random garages.

#pragma once

#include "consent/world.h"
#include "hostdb/random_source.h"

namespace qbx::consent {

/// \param customers  how many
[[nodiscard]] World MakeWorld(RandomSource& random, int customers);

/// For rounds that leave out the rule that blanks at the end of a text do not count.
void RemoveTrailingBlanks(World& world);

}  // namespace qbx::consent
