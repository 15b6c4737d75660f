// A round with the real program and the sandbox: real connections, and a real end by signal 9.

#pragma once

#include "consent/round.h"
#include "support/sandbox_process.h"

namespace qbx::consent {

/// Plays a round. Seed and number determine garage, campaign and plan, and at which message the program is killed. What
/// the program has done by then also depends on the computer's speed.
RoundCounts PlayRealRound(const RoundWishes& wishes, int number, const test::SandboxProcess& sandbox, Story& story);

}  // namespace qbx::consent
