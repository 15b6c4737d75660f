// Files that are found by names whose case nobody can rely on.

#pragma once

#include <QString>
#include <optional>

namespace qbx {

/// Finds a file or folder below a folder without regard to the case of its name. Names come from a world where "/" and
/// "\" are alike, and so are "QBX.INI" and "qbx.ini".
/// \param name  may have folders in front, parted by "/" or "\"; a name in the exact case wins over others
/// \return the path as it is on this disk; nothing when there is no such file, or `name` is empty
[[nodiscard]] std::optional<QString> FindFileNoCase(const QString& folder, const QString& name);

/// `FindFileNoCase`, or else the path under which the file would be made: `name` below `folder` with "/" for every "\".
[[nodiscard]] QString PathNoCase(const QString& folder, const QString& name);

}  // namespace qbx
