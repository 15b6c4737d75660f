// Upgrades a database of an older program to this program.

#pragma once

#include <QString>
#include <span>

#include "hostdb/embedded_sql.h"

namespace qbx {

/// The number of a database of this program (`_Version.File_Number`): the number of the last upgrade.
[[nodiscard]] int NewestFileNumber();

/// Whether a database has the name of a copy: it ends in ".before-" and a number. The program neither makes nor opens
/// such a database, because it would be removed with the older copies.
[[nodiscard]] bool IsNameOfCopy(const QString& path);

/// Upgrades a database to this program. Run it on every file before the file is opened. When there is nothing to do, it
/// costs one opening and one small read. When an upgrade may be due, the process must have no other connection to the
/// file.
///
/// - Upgrades with a number above the file's run in one transaction, during which nobody else can use the file. First
///   the database is copied to "<name>.before-N.db" beside it, where N is its new number. The last two copies are kept.
///   When several programs start at the same moment, one upgrades and the others wait.
/// - Views, triggers and procedures are renewed when their text in this program differs from the text that it installed
///   last (see PutObjectsBack). When a program with a later set of texts was here (`_Version.Objects_Set`), nothing is
///   renewed: an older program does not put older texts back.
///
/// A database that is no host database stays as it is. So does one that only needs renewing, when it cannot be written
/// or when somebody else writes for more than two seconds.
/// \throws DatabaseError with a sentence for the user: 948 the file has a higher number than this program; 5061 another
///         program has it open; 1105 no room for the copy; 3906 it cannot be written; 5069 an upgrade failed; 5120 it
///         does not say its number; 5123 it has the name of a copy. Nothing was changed then.
/// \return whether upgrades were run
bool KeepUpToDate(const QString& path);

/// The same with other upgrades than the program's own, in the order of their numbers.
bool KeepUpToDateWith(const QString& path, std::span<const EmbeddedSql> upgrades);

}  // namespace qbx
