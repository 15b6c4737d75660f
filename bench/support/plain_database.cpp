#include "plain_database.h"

#include <sqlite3.h>

#include "database/embedded/functions.h"
#include "hostdb/host_database.h"
#include "rounds.h"

namespace qbx::bench {
namespace {

/// Reads a column as the type that is stored.
/// \return a number that depends on the value, so that the compiler keeps the reading
qint64 ReadColumn(sqlite3_stmt* statement, int column) {
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL:
      return 0;
    case SQLITE_INTEGER:
      return sqlite3_column_int64(statement, column);
    case SQLITE_FLOAT:
      return static_cast<qint64>(sqlite3_column_double(statement, column));
    default: {
      const unsigned char* text = sqlite3_column_text(statement, column);
      return sqlite3_column_bytes(statement, column) + (text != nullptr ? *text : 0);
    }
  }
}

}  // namespace

SqliteFile OpenPlain(const QString& file, const Clock& clock) {
  SqliteFile database(file, SqliteMode::kExisting);
  RegisterFunctions(database.Handle(), clock);
  ExecuteSql(database.Handle(),
             "PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL; PRAGMA cache_size = -11000; "
             "PRAGMA temp_store = MEMORY");
  return database;
}

std::vector<SqliteStatement> PrepareProcedure(sqlite3* database, const char* name) {
  std::vector<SqliteStatement> statements;
  for (const ProcedureFile& file : BuiltInProcedures()) {
    if (file.name != name) continue;
    std::string_view sql(file.body.constData(), static_cast<std::size_t>(file.body.size()));
    while (!sql.empty()) {
      SqliteStatement statement(database, sql, &sql);
      if (statement.Handle() != nullptr) statements.push_back(std::move(statement));
    }
  }
  if (statements.empty()) Fail(name);
  return statements;
}

void Bind(SqliteStatement& statement, const char* name, qint64 value) {
  statement.Bind(sqlite3_bind_parameter_index(statement.Handle(), name), value);
}

void Bind(SqliteStatement& statement, const char* name, std::string_view text) {
  statement.Bind(sqlite3_bind_parameter_index(statement.Handle(), name), text);
}

qint64 StepThrough(SqliteStatement& statement) {
  const int columns = statement.ColumnCount();
  qint64 rows = 0;
  qint64 sum = 0;
  while (statement.Step()) {
    ++rows;
    for (int column = 0; column < columns; ++column)
      sum += ReadColumn(statement.Handle(), column);
  }
  volatile qint64 kept = sum;
  (void)kept;
  return rows;
}

}  // namespace qbx::bench
