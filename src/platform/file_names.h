// Finding files by name, whatever the case of the name.

#pragma once

#include <QString>
#include <optional>

namespace qbx {

/// Finds a file or folder below a folder, ignoring the case of its name. The host product's settings were written for a
/// system where "/" and "\" are alike, and so are "QBX.INI" and "qbx.ini".
/// \param name  may begin with folders, separated by "/" or "\"; a name in the exact case is preferred
/// \return the path as it is on this disk; nothing when there is no such file, or `name` is empty
[[nodiscard]] std::optional<QString> FindFileNoCase(const QString& folder, const QString& name);

/// The result of `FindFileNoCase`, or else the path for a new file: `name` below `folder`, with "/" for every "\".
[[nodiscard]] QString PathNoCase(const QString& folder, const QString& name);

}  // namespace qbx
