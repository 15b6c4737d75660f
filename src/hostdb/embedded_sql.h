// The .sql files of this folder as they are built into the program.

#pragma once

#include <span>
#include <string_view>

namespace qbx {

struct EmbeddedSql {
  const char* name;  ///< of the file, without ".sql"
  const char* text;
};

/// All files in the order of their names. The names of upgrades begin with a number of four digits.
[[nodiscard]] std::span<const EmbeddedSql> SchemaFiles();
/// The schema file that is applied after the content: it is much faster to fill a table first and index it then.
inline constexpr std::string_view kIndexFile = "indexes";
[[nodiscard]] std::span<const EmbeddedSql> ProcedureFiles();
[[nodiscard]] std::span<const EmbeddedSql> UpgradeFiles();

/// The fingerprint of the texts of all schema and procedure files and of the script for SQL Server. It changes with
/// each of them.
[[nodiscard]] const char* ObjectsFingerprint();
/// The number of this set of texts. A later program has a higher number.
[[nodiscard]] int ObjectsSet();

/// The script for SQL Server, which is made from the same files.
[[nodiscard]] const char* EmbeddedServerScript();

}  // namespace qbx
