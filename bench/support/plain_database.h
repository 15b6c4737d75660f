// SQLite with nothing but its owners around it, as a program without any layer of ours would use it.

#pragma once

#include <QString>
#include <string_view>
#include <vector>

#include "platform/clock.h"
#include "sqlite/sqlite_file.h"

namespace qbx::bench {

// A refusal of SQLite is thrown and ends the process.

/// Opens with the functions, the collation and the pragmas that the program's own connection has (WAL, synchronous FULL).
[[nodiscard]] SqliteFile OpenPlain(const QString& file, const Clock& clock);
/// The statements of a stored procedure that is built into the program, in their order.
[[nodiscard]] std::vector<SqliteStatement> PrepareProcedure(sqlite3* database, const char* name);

/// Binds by name; a statement that does not have the name is left alone.
void Bind(SqliteStatement& statement, const char* name, qint64 value);
void Bind(SqliteStatement& statement, const char* name, std::string_view text);

/// Steps to the end with every column of every row read, resets. \return the number of rows
qint64 StepThrough(SqliteStatement& statement);

}  // namespace qbx::bench
