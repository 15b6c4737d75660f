// Commands about the program and the world around it.

#pragma once

#include "bridge.h"

namespace qbx::scenario {

class Stage;

void AddWorldCommands(Bridge& bridge, Stage& stage);
/// Those about the host database.
void AddDatabaseCommands(Bridge& bridge, Stage& stage);

}  // namespace qbx::scenario
