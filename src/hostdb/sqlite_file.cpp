#include "hostdb/sqlite_file.h"

#include <sqlite3.h>

#include <string>

#include "database/embedded/functions.h"

namespace qbx {

SqliteFailure::SqliteFailure(sqlite3* database)
    : std::runtime_error(database != nullptr ? sqlite3_errmsg(database) : "out of memory"),
      code_(sqlite3_errcode(database) & 0xFF) {}

bool SqliteFailure::IsBusy() const {
  return code_ == SQLITE_BUSY;
}

bool SqliteFailure::IsMissingObject() const {
  const std::string_view message = what();
  return code_ == SQLITE_ERROR && (message.starts_with("no such table") || message.starts_with("no such column"));
}

SqliteFile::SqliteFile(const QString& path) {
  const int result =
      sqlite3_open_v2(path.toUtf8().constData(), &database_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
  if (result == SQLITE_OK) {
    RegisterFunctions(database_, clock_);
    return;
  }
  const SqliteFailure failure(database_);
  sqlite3_close(database_);
  throw failure;
}

SqliteFile::~SqliteFile() {
  sqlite3_close(database_);
}

void ExecuteSql(sqlite3* database, const char* sql) {
  if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) != SQLITE_OK) throw SqliteFailure(database);
}

SqliteStatement::SqliteStatement(sqlite3* database, const char* sql) : database_(database) {
  if (sqlite3_prepare_v3(database, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement_, nullptr) != SQLITE_OK)
    throw SqliteFailure(database);
}

SqliteStatement::~SqliteStatement() {
  sqlite3_finalize(statement_);
}

SqliteStatement& SqliteStatement::Add(qint64 value) {
  sqlite3_bind_int64(statement_, next_++, value);
  return *this;
}

SqliteStatement& SqliteStatement::Add(double value) {
  sqlite3_bind_double(statement_, next_++, value);
  return *this;
}

SqliteStatement& SqliteStatement::Add(std::string_view utf8) {
  sqlite3_bind_text(statement_, next_++, utf8.data(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
  return *this;
}

SqliteStatement& SqliteStatement::AddNull() {
  sqlite3_bind_null(statement_, next_++);
  return *this;
}

void SqliteStatement::Run() {
  while (Step()) {
  }
}

bool SqliteStatement::Step() {
  const int result = sqlite3_step(statement_);
  if (result == SQLITE_ROW) return true;
  next_ = 1;
  if (sqlite3_reset(statement_) != SQLITE_OK || result != SQLITE_DONE) throw SqliteFailure(database_);
  return false;
}

qint64 SqliteStatement::IntegerAt(int column) const {
  return sqlite3_column_int64(statement_, column);
}

QByteArray SqliteStatement::TextAt(int column) const {
  return QByteArray(reinterpret_cast<const char*>(sqlite3_column_text(statement_, column)));
}

}  // namespace qbx
