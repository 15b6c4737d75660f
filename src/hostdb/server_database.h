// The host database on SQL Server: the script that makes it, and running that.

#pragma once

#include <QString>
#include <QStringList>

namespace qbx {

class Session;

/// The script that makes an empty database one of this program, and brings one of an older program up to date: tables,
/// views, triggers, procedures and the role with the rights that a login of the program needs. Run again, it renews
/// what is not a table. All of it is one transaction. It refuses a database of a newer program.
[[nodiscard]] QString ServerScript();

/// The batches of a script: what stands between lines that hold nothing but GO, in whatever case, without those that
/// are empty.
[[nodiscard]] QStringList BatchesOf(const QString& script);

/// Runs ServerScript in the database that the session is in. It needs a login that may make tables there (db_owner).
/// \throws DatabaseError of the batch that failed; nothing was changed then
void InstallOnServer(Session& session);

}  // namespace qbx
