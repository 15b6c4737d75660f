// The .sql files of this folder as they are built into the program.

#pragma once

#include <span>
#include <string_view>

namespace qbx {

struct EmbeddedSql {
  const char* name;  ///< of the file, without ".sql"
  const char* text;
};

/// All in the order of their names; those of upgrades begin with their numbers, of four digits.
[[nodiscard]] std::span<const EmbeddedSql> SchemaFiles();
/// The schema file that is applied behind the content: filling a table first and indexing it then is much faster.
inline constexpr std::string_view kIndexFile = "indexes";
[[nodiscard]] std::span<const EmbeddedSql> ProcedureFiles();
[[nodiscard]] std::span<const EmbeddedSql> UpgradeFiles();

/// Stands for the texts of every schema and procedure file and of the script for SQL Server: another text of any of
/// them is another fingerprint.
[[nodiscard]] const char* ObjectsFingerprint();
/// The number of this set of texts: those of a later program have a higher one.
[[nodiscard]] int ObjectsSet();

/// The script for SQL Server that is made of the same files.
[[nodiscard]] const char* EmbeddedServerScript();

}  // namespace qbx
