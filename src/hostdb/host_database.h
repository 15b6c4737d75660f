// The embedded host database as a file: making one.

#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

struct sqlite3;

namespace qbx {

/// Versions that a database of this program carries: the host's schema and the level of this module (`Marketing_Version`).
inline constexpr int kHostSchemaVersion = 999;
inline constexpr int kHostModuleVersion = 6;

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

/// A procedure file, taken apart.
struct ProcedureFile {
  QByteArray name;    ///< as written behind CREATE PROCEDURE
  QByteArray header;  ///< from CREATE PROCEDURE to the line before AS: the name and the parameters
  QByteArray body;    ///< the SQLite statements behind the line AS
};

/// Every procedure that is built into the program, in the order of their names.
[[nodiscard]] std::vector<ProcedureFile> BuiltInProcedures();

}  // namespace qbx
