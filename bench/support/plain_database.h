// The bare C API on a database file, as a program without any layer of ours would use it.

#pragma once

#include <sqlite3.h>

#include <QByteArray>
#include <QString>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/clock.h"

namespace qbx::bench {

struct CloseDatabase {
  void operator()(sqlite3* database) const { sqlite3_close(database); }
};
using PlainDatabase = std::unique_ptr<sqlite3, CloseDatabase>;

struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using PlainStatement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

// All of these end the process when SQLite refuses.

/// Opens with the functions, the collation and the pragmas that the program's own connection has (WAL, synchronous FULL).
[[nodiscard]] PlainDatabase OpenPlain(const QString& file, const Clock& clock);
void RunSql(sqlite3* database, const char* sql);
[[nodiscard]] PlainStatement Prepare(sqlite3* database, std::string_view sql);
/// The statements of a stored procedure that is built into the program, in their order.
[[nodiscard]] std::vector<PlainStatement> PrepareProcedure(sqlite3* database, const char* name);

/// Binds by name; a statement that does not have the name is left alone. The text must live until the statement ran.
void Bind(const PlainStatement& statement, const char* name, qint64 value);
void Bind(const PlainStatement& statement, const char* name, std::string_view text);

/// Steps to the end with every column of every row read, resets. \return the number of rows
qint64 StepThrough(const PlainStatement& statement);

}  // namespace qbx::bench
