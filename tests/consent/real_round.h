// A round with the real program and the sandbox: real connections, and a real end by signal 9.

#pragma once

#include "consent/round.h"
#include "support/sandbox_process.h"

namespace qbx::consent {

/// Plays a round. Garage, campaign and plan are the same whenever seed and number are; at which message the program is
/// killed is counted, but what it had done by then is up to the computer.
RoundCounts PlayRealRound(const RoundWishes& wishes, int number, const test::SandboxProcess& sandbox, Story& story);

}  // namespace qbx::consent
