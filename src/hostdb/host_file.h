// A host database's file as it is opened to be made or changed.

#pragma once

#include "sqlite/sqlite_file.h"

namespace qbx {

/// Opens a file, making it when it is not there, with the functions and the collation that the engine registers on its own connections: an index has
/// to be built with the order it will be read in.
/// \throws SqliteFailure
[[nodiscard]] SqliteFile OpenHostFile(const QString& path);

}  // namespace qbx
