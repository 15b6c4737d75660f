// Commands about windows and controls.

#pragma once

#include "bridge.h"

namespace qbx::scenario {

class Stage;

void AddControlCommands(Bridge& bridge, Stage& stage);

}  // namespace qbx::scenario
