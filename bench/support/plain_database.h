// SQLite without the layers of the program, for comparisons.

#pragma once

#include <QString>
#include <string_view>
#include <vector>

#include "platform/clock.h"
#include "sqlite/sqlite_file.h"

namespace qbx::bench {

// A failure of SQLite is thrown and ends the process.

/// Opens a file with the functions, the collation and the pragmas of the program's connection (WAL, synchronous FULL).
[[nodiscard]] SqliteFile OpenPlain(const QString& file, const Clock& clock);
/// The statements of one of the program's stored procedures, in their order.
[[nodiscard]] std::vector<SqliteStatement> PrepareProcedure(sqlite3* database, const char* name);

/// Binds a value by name. Does nothing when the statement lacks the name.
void Bind(SqliteStatement& statement, const char* name, qint64 value);
void Bind(SqliteStatement& statement, const char* name, std::string_view text);

/// Reads every column of every row and resets the statement. \return the number of rows
qint64 StepThrough(SqliteStatement& statement);

}  // namespace qbx::bench
