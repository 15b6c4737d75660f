// Keeping a database that an older program made in step with this one.

#pragma once

#include <span>

#include "hostdb/embedded_sql.h"

struct sqlite3;

namespace qbx {

/// The number that a database of this program carries (`_Version.File_Number`): that of the last upgrade.
[[nodiscard]] int NewestFileNumber();

/// Brings an opened database up to this program. Meant to be run on every opened connection; costs one small read when there is nothing to do.
///
/// - Upgrades with a number above the file's run in one transaction, in which nobody else has the file; before that the database is copied to
///   "<name>.before-N.db" beside it, where N is the number that it gets. The last two copies are kept.
/// - Views, triggers and procedures whose text in this program is another one than it installed last are renewed (see PutObjectsBack).
///
/// A database that is no host database is left alone, and so is one that cannot be written when it lacks nothing but renewing.
/// \throws DatabaseError with a sentence for the user: 948 the file has a higher number than this program; 5061 another program has it open;
///         1105 no room for the copy; 3906 it cannot be written; 5069 an upgrade failed. Nothing was changed then.
void KeepUpToDate(sqlite3* database);

/// The same with other upgrades than the program's own, in the order of their numbers.
void KeepUpToDateWith(sqlite3* database, std::span<const EmbeddedSql> upgrades);

}  // namespace qbx
