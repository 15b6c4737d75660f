#include "database/embedded/sqlite_database.h"

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <thread>

#include "database/server_errors.h"

namespace qbx {
namespace {

constexpr int kOperationsBetweenLooks = 1000;

qint64 SteadyMilliseconds() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

SqliteFile OpenDatabaseFile(const QString& name, const QString& file) {
  try {
    return SqliteFile(file, SqliteMode::kExisting);
  } catch (const SqliteFailure& failure) {
    throw ErrorFromSqlite(failure, {.database = name, .file = file});
  }
}

}  // namespace

SqliteDatabase::SqliteDatabase(const QString& name, const QString& file,
                               std::shared_ptr<const std::atomic<int>> generation)
    : name_(name),
      path_(file),
      file_(OpenDatabaseFile(name, file)),
      generation_(std::move(generation)),
      bornIn_(*generation_) {
  sqlite3_extended_result_codes(Handle(), 1);
  sqlite3_db_config(Handle(), SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(Handle(), SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  InstallHandlers();
}

void SqliteDatabase::InstallHandlers() {
  sqlite3_progress_handler(Handle(), kOperationsBetweenLooks, OnProgress, this);
  sqlite3_busy_handler(Handle(), OnBusy, this);
}

void SqliteDatabase::BeginCall() {
  if (Lost()) throw LostConnectionError();
  deadline_ = 0;
  interrupted_ = false;
  stopped_ = StopReason::kNone;
}

bool SqliteDatabase::MustStop() {
  if (shielded_) return false;
  if (interrupted_) {
    stopped_ = StopReason::kCancelled;
    return true;
  }
  if (timeoutSeconds_ <= 0) return false;
  const qint64 now = SteadyMilliseconds();
  if (deadline_ == 0) deadline_ = now + qint64{timeoutSeconds_} * 1000;
  if (now < deadline_) return false;
  stopped_ = StopReason::kTimeout;
  return true;
}

void SqliteDatabase::ThrowIfInterrupted() {
  if (!interrupted_ || shielded_) return;
  stopped_ = StopReason::kCancelled;
  Fail(SQLITE_INTERRUPT);
}

int SqliteDatabase::OnProgress(void* self) {
  return static_cast<SqliteDatabase*>(self)->MustStop() ? 1 : 0;
}

int SqliteDatabase::OnBusy(void* self, int count) {
  if (static_cast<SqliteDatabase*>(self)->MustStop()) return 0;
  std::this_thread::sleep_for(std::chrono::milliseconds(std::min(1 + count, 10)));
  return 1;
}

void SqliteDatabase::Run(const char* sql) {
  const int code = TryExecuteSql(Handle(), sql);
  if (code != SQLITE_OK) Fail(code, QString::fromUtf8(sql));
}

void SqliteDatabase::Fail(int code, const QString& statement) {
  throw Error(SqliteFailure(Handle(), code), statement);
}

DatabaseError SqliteDatabase::Error(const SqliteFailure& failure, const QString& statement) const {
  return ErrorFromSqlite(failure, {name_, path_, statement, stopped_});
}

}  // namespace qbx
