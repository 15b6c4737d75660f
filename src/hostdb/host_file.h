// Opens the file of a host database to make or change it.

#pragma once

#include "sqlite/sqlite_file.h"

namespace qbx {

/// Opens a file, or makes it when it is missing. Registers the functions and the collation that the engine uses,
/// because an index must be built in the order in which it is read.
/// \throws SqliteFailure
[[nodiscard]] SqliteFile OpenHostFile(const QString& path);

}  // namespace qbx
