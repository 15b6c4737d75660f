// The version of the programs.

#pragma once

#include <QString>

namespace qbx {

/// Such as "1.0.0": version, release and revision.
[[nodiscard]] QString ProgramVersion();

}  // namespace qbx
