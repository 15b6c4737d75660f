// The host database on SQL Server: the script that makes it, and how to run the script.

#pragma once

#include <QString>
#include <QStringList>

namespace qbx {

class Session;

/// The script that fills an empty database, or upgrades the database of an older program: tables, views, triggers,
/// procedures, and the role with the rights that a login of the program needs. Run again, it renews everything except
/// tables. All of it is one transaction. It refuses the database of a newer program.
[[nodiscard]] QString ServerScript();

/// The batches of a script: the texts between lines that hold only GO, in upper or lower case, without empty ones.
[[nodiscard]] QStringList BatchesOf(const QString& script);

/// Runs ServerScript in the database of the session. It needs a login that may make tables there (db_owner).
/// \throws DatabaseError of the batch that failed, which it names. Nothing was changed then, unless the connection was
///         lost in the last batch.
void InstallOnServer(Session& session);

}  // namespace qbx
