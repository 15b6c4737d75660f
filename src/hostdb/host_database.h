// Makes the file of an embedded host database.

#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

struct sqlite3;

namespace qbx {

/// Versions in a database of this program: the host's schema, and the level of this module (`Marketing_Version`).
inline constexpr int kHostSchemaVersion = 999;
inline constexpr int kHostModuleVersion = 6;

/// What to do when the file exists.
enum class ExistingFile { kRefuse, kReplace };

/// Why a database could not be made, as a sentence for the user; nothing on success.
using HostDatabaseProblem = std::optional<QString>;

/// Makes a host database: every table, every procedure, an options row for company "A" and nothing else. The file gets
/// a temporary name beside `path` and is renamed when it is complete. So `path` never holds half a database, and a
/// failure leaves an existing file as it was.
/// \param path  the file, usually `<program folder>/<database name>.db`; its folder must exist
/// \param fill  called with the open database inside one transaction, to add content; when it returns a problem,
///              nothing is made
[[nodiscard]] HostDatabaseProblem CreateHostDatabase(const QString& path, ExistingFile existing,
                                                     const std::function<HostDatabaseProblem(sqlite3*)>& fill = {});

/// A procedure file, taken apart.
struct ProcedureFile {
  QByteArray name;    ///< as it follows CREATE PROCEDURE
  QByteArray header;  ///< from CREATE PROCEDURE to the line before AS: the name and the parameters
  QByteArray body;    ///< the SQLite statements after the line AS
};

/// Every procedure that is built into the program, in the order of their names.
[[nodiscard]] std::vector<ProcedureFile> BuiltInProcedures();

}  // namespace qbx
