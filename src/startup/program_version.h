// The version of the programs.

#pragma once

#include <QString>

namespace qbx {

/// Version, release and revision, such as "1.0.0".
[[nodiscard]] QString ProgramVersion();

}  // namespace qbx
