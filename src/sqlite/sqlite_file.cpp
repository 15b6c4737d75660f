#include "sqlite/sqlite_file.h"

#include <sqlite3.h>

namespace qbx {
namespace {

int FlagsOf(SqliteMode mode) {
  if (mode == SqliteMode::kReadOnly) return SQLITE_OPEN_READONLY;
  return mode == SqliteMode::kExisting ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
}

}  // namespace

SqliteFailure::SqliteFailure(sqlite3* database)
    : SqliteFailure(database, database != nullptr ? sqlite3_extended_errcode(database) : SQLITE_NOMEM) {}

SqliteFailure::SqliteFailure(sqlite3* database, int code)
    : std::runtime_error(database != nullptr ? sqlite3_errmsg(database) : sqlite3_errstr(code)), code_(code) {}

bool SqliteFailure::IsBusy() const {
  return (code_ & 0xFF) == SQLITE_BUSY;
}

bool SqliteFailure::IsMissingObject() const {
  const std::string_view message = what();
  return (code_ & 0xFF) == SQLITE_ERROR &&
         (message.starts_with("no such table") || message.starts_with("no such column"));
}

SqliteFile::SqliteFile(const QString& path, SqliteMode mode) {
  sqlite3* database = nullptr;
  const int code =
      sqlite3_open_v2(path.toUtf8().constData(), &database, FlagsOf(mode) | SQLITE_OPEN_FULLMUTEX, nullptr);
  database_.reset(database);
  if (code != SQLITE_OK) throw SqliteFailure(database, code);
}

void SqliteFile::Close::operator()(sqlite3* database) const {
  sqlite3_close_v2(database);
}

void ExecuteSql(sqlite3* database, const char* sql) {
  if (const int code = TryExecuteSql(database, sql); code != SQLITE_OK) throw SqliteFailure(database, code);
}

int TryExecuteSql(sqlite3* database, const char* sql) noexcept {
  return sqlite3_exec(database, sql, nullptr, nullptr, nullptr);
}

SqliteStatement::SqliteStatement(sqlite3* database, std::string_view sql, std::string_view* rest)
    : database_(database) {
  sqlite3_stmt* statement = nullptr;
  const char* end = nullptr;
  const int code = sqlite3_prepare_v3(database, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                                      &statement, &end);
  statement_.reset(statement);
  if (code != SQLITE_OK) throw SqliteFailure(database, code);
  if (rest != nullptr) *rest = sql.substr(static_cast<std::size_t>(end - sql.data()));
}

void SqliteStatement::Finalize::operator()(sqlite3_stmt* statement) const {
  sqlite3_finalize(statement);
}

SqliteStatement& SqliteStatement::Add(qint64 value) {
  Bind(next_++, value);
  return *this;
}

SqliteStatement& SqliteStatement::Add(double value) {
  Bind(next_++, value);
  return *this;
}

SqliteStatement& SqliteStatement::Add(std::string_view utf8) {
  Bind(next_++, utf8);
  return *this;
}

SqliteStatement& SqliteStatement::AddNull() {
  BindNull(next_++);
  return *this;
}

void SqliteStatement::Bind(int index, qint64 value) {
  sqlite3_bind_int64(Handle(), index, value);
}

void SqliteStatement::Bind(int index, double value) {
  sqlite3_bind_double(Handle(), index, value);
}

void SqliteStatement::Bind(int index, std::string_view utf8) {
  // The data of an empty view may be null, which SQLite would take for NULL.
  const char* text = utf8.empty() ? "" : utf8.data();
  sqlite3_bind_text64(Handle(), index, text, utf8.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void SqliteStatement::BindNull(int index) {
  sqlite3_bind_null(Handle(), index);
}

void SqliteStatement::Run() {
  while (Step()) {
  }
}

bool SqliteStatement::Step() {
  const int result = StepOnly();
  if (result == SQLITE_ROW) return true;
  next_ = 1;
  if (sqlite3_reset(Handle()) != SQLITE_OK || result != SQLITE_DONE) throw SqliteFailure(database_);
  return false;
}

int SqliteStatement::StepOnly() noexcept {
  return sqlite3_step(Handle());
}

void SqliteStatement::Reset() noexcept {
  sqlite3_reset(Handle());
}

void SqliteStatement::ClearBindings() noexcept {
  sqlite3_clear_bindings(Handle());
}

int SqliteStatement::ColumnCount() const {
  return sqlite3_column_count(Handle());
}

bool SqliteStatement::IsNullAt(int column) const {
  return sqlite3_column_type(Handle(), column) == SQLITE_NULL;
}

qint64 SqliteStatement::IntegerAt(int column) const {
  return sqlite3_column_int64(Handle(), column);
}

double SqliteStatement::DoubleAt(int column) const {
  return sqlite3_column_double(Handle(), column);
}

QByteArray SqliteStatement::TextAt(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(Handle(), column));
  return QByteArray(text, sqlite3_column_bytes(Handle(), column));
}

}  // namespace qbx
