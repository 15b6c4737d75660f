#include "plain_database.h"

#include "database/embedded/functions.h"
#include "hostdb/host_database.h"
#include "rounds.h"

namespace qbx::bench {
namespace {

/// Reads a column as its storage says. \return something that depends on it, so that nothing is optimised away
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

PlainStatement PrepareNext(sqlite3* database, const char*& sql, int size) {
  sqlite3_stmt* statement = nullptr;
  const int code = sqlite3_prepare_v3(database, sql, size, SQLITE_PREPARE_PERSISTENT, &statement, &sql);
  if (code != SQLITE_OK) Fail(sqlite3_errmsg(database));
  return PlainStatement(statement);
}

}  // namespace

PlainDatabase OpenPlain(const QString& file, const Clock& clock) {
  sqlite3* handle = nullptr;
  const int code = sqlite3_open_v2(file.toUtf8().constData(), &handle, SQLITE_OPEN_READWRITE, nullptr);
  PlainDatabase database(handle);
  if (code != SQLITE_OK) Fail("the database could not be opened");
  RegisterFunctions(handle, clock);
  RunSql(handle,
         "PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL; PRAGMA foreign_keys = ON; PRAGMA cache_size = -16000; "
         "PRAGMA temp_store = MEMORY");
  return database;
}

void RunSql(sqlite3* database, const char* sql) {
  if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) != SQLITE_OK) Fail(sqlite3_errmsg(database));
}

PlainStatement Prepare(sqlite3* database, std::string_view sql) {
  const char* begin = sql.data();
  return PrepareNext(database, begin, static_cast<int>(sql.size()));
}

std::vector<PlainStatement> PrepareProcedure(sqlite3* database, const char* name) {
  std::vector<PlainStatement> statements;
  for (const ProcedureFile& file : BuiltInProcedures()) {
    if (file.name != name) continue;
    const char* sql = file.body.constData();
    const char* end = sql + file.body.size();
    while (sql < end) {
      PlainStatement statement = PrepareNext(database, sql, static_cast<int>(end - sql));
      if (statement) statements.push_back(std::move(statement));
    }
  }
  if (statements.empty()) Fail(name);
  return statements;
}

void Bind(const PlainStatement& statement, const char* name, qint64 value) {
  sqlite3_bind_int64(statement.get(), sqlite3_bind_parameter_index(statement.get(), name), value);
}

void Bind(const PlainStatement& statement, const char* name, std::string_view text) {
  sqlite3_bind_text(statement.get(), sqlite3_bind_parameter_index(statement.get(), name), text.data(),
                    static_cast<int>(text.size()), SQLITE_STATIC);
}

qint64 StepThrough(const PlainStatement& statement) {
  const int columns = sqlite3_column_count(statement.get());
  qint64 rows = 0;
  qint64 sum = 0;
  while (sqlite3_step(statement.get()) == SQLITE_ROW) {
    ++rows;
    for (int column = 0; column < columns; ++column)
      sum += ReadColumn(statement.get(), column);
  }
  if (sqlite3_reset(statement.get()) != SQLITE_OK) Fail(sqlite3_errmsg(sqlite3_db_handle(statement.get())));
  volatile qint64 kept = sum;
  (void)kept;
  return rows;
}

}  // namespace qbx::bench
