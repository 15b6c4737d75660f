// One SQLite connection with the limits of a session: time-out, interruption, being broken off.

#include "database/embedded/sqlite_database.h"

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace qbx {
namespace {

constexpr int kOperationsBetweenLooks = 1000;

qint64 SteadyMilliseconds() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

}  // namespace

SqliteDatabase::SqliteDatabase(const QString& name, const QString& file,
                               std::shared_ptr<const std::atomic<int>> generation)
    : name_(name), file_(file), generation_(std::move(generation)), bornIn_(*generation_) {
  const int code =
      sqlite3_open_v2(file.toUtf8().constData(), &handle_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_FULLMUTEX, nullptr);
  if (code != SQLITE_OK) {
    const DatabaseError error = Error(code);
    sqlite3_close(handle_);
    throw error;
  }
  sqlite3_extended_result_codes(handle_, 1);
  sqlite3_db_config(handle_, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(handle_, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  InstallHandlers();
}

void SqliteDatabase::InstallHandlers() {
  sqlite3_progress_handler(handle_, kOperationsBetweenLooks, OnProgress, this);
  sqlite3_busy_handler(handle_, OnBusy, this);
}

SqliteDatabase::~SqliteDatabase() {
  sqlite3_close_v2(handle_);
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
  const int code = sqlite3_exec(handle_, sql, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) Fail(code, QString::fromUtf8(sql));
}

void SqliteDatabase::Fail(int code, const QString& statement) {
  throw Error(code, statement);
}

DatabaseError SqliteDatabase::Error(int code, const QString& statement) const {
  return ErrorFromSqlite(handle_, code, {name_, file_, statement, stopped_});
}

}  // namespace qbx
