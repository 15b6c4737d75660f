// The embedded host database as a file: making an empty one, and keeping the procedures inside it up to date.

#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

struct sqlite3;

namespace qbx {

/// Versions that a database of this program carries: the host's schema, the level of this module (`Marketing_Version`),
/// and the set of stored procedures (raise it whenever a file below procedures/ changes).
inline constexpr int kHostSchemaVersion = 999;
inline constexpr int kHostModuleVersion = 6;
inline constexpr int kHostProceduresVersion = 3;

/// What to do when the file is already there.
enum class ExistingFile { kRefuse, kReplace };

/// Why a database could not be made, as a sentence for the user; nothing on success.
using HostDatabaseProblem = std::optional<QString>;

/// Makes a host database: every table, every procedure, an options row for company "A" and nothing else. The file is
/// built under a temporary name beside `path` and renamed when it is complete, so `path` never holds half a database
/// and a failure leaves what was there.
/// \param path  the file, by custom `<program folder>/<database name>.db`; its folder must exist
/// \param fill  called with the open database inside one transaction, to put content into it; a
///              problem that it returns gives all of it up
[[nodiscard]] HostDatabaseProblem CreateHostDatabase(const QString& path, ExistingFile existing,
                                                     const std::function<HostDatabaseProblem(sqlite3*)>& fill = {});

/// Brings the stored procedures up to this program's version when the database holds an older one; procedures that the
/// database has besides are kept. Does nothing to a database of the same or a newer version, to one that is no host
/// database and to one that cannot be written. Meant to be run on every opened connection; costs one small read when
/// there is nothing to do.
void RefreshProcedures(sqlite3* database);

/// A procedure file, taken apart.
struct ProcedureFile {
  QByteArray name;    ///< as written behind CREATE PROCEDURE
  QByteArray header;  ///< from CREATE PROCEDURE to the line before AS: the name and the parameters
  QByteArray body;    ///< the SQLite statements behind the line AS
};

/// Every procedure that is built into the program, in the order of their names.
[[nodiscard]] std::vector<ProcedureFile> BuiltInProcedures();

}  // namespace qbx
