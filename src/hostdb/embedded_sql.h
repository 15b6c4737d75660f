// The .sql files of this folder as they are built into the program.

#pragma once

#include <span>

namespace qbx {

struct EmbeddedSql {
  const char* name;  ///< of the file, without ".sql"
  const char* text;
};

/// Both in the order of their names.
[[nodiscard]] std::span<const EmbeddedSql> SchemaFiles();
[[nodiscard]] std::span<const EmbeddedSql> ProcedureFiles();

}  // namespace qbx
