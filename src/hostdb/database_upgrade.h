// Keeping a database that an older program made in step with this one.

#pragma once

#include <QString>
#include <span>

#include "hostdb/embedded_sql.h"

namespace qbx {

/// The number that a database of this program carries (`_Version.File_Number`): that of the last upgrade.
[[nodiscard]] int NewestFileNumber();

/// Whether a database's name is one that copies get: it ends in ".before-" and a number. Such a database is neither made nor opened: it would be
/// removed with the older copies.
[[nodiscard]] bool IsNameOfCopy(const QString& path);

/// Brings a database up to this program. Meant to be run on every file before it is opened; costs one opening and one small read when there is
/// nothing to do. The process must have no other connection to the file when an upgrade may be due.
///
/// - Upgrades with a number above the file's run in one transaction, in which nobody else has the file; before that the database is copied to
///   "<name>.before-N.db" beside it, where N is the number that it gets. The last two copies are kept. Of several programs that begin at the
///   same moment one does it, and the others wait for it.
/// - Views, triggers and procedures whose text in this program is another one than it installed last are renewed (see PutObjectsBack), unless a program with a
///   later set of them was here (`_Version.Objects_Set`): an older program puts nothing back.
///
/// A database that is no host database is left alone. One that lacks nothing but renewing is left as it is when it cannot be written, or when
/// somebody else writes for more than two seconds.
/// \throws DatabaseError with a sentence for the user: 948 the file has a higher number than this program; 5061 another program has it open;
///         1105 no room for the copy; 3906 it cannot be written; 5069 an upgrade failed; 5120 it does not say its number; 5123 its name is that of a copy. Nothing was changed then.
/// \return whether upgrades were run
bool KeepUpToDate(const QString& path);

/// The same with other upgrades than the program's own, in the order of their numbers.
bool KeepUpToDateWith(const QString& path, std::span<const EmbeddedSql> upgrades);

}  // namespace qbx
