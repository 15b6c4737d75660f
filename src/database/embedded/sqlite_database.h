// One SQLite connection with the time-out and interruption of a session, which can also be broken off.

#pragma once

#include <QString>
#include <atomic>
#include <memory>

#include "database/database_error.h"
#include "database/embedded/errors.h"
#include "sqlite/sqlite_file.h"

namespace qbx {

/// Shared by a session and its results, so that a result stays valid when its session is closed.
class SqliteDatabase {
 public:
  /// Opens an existing file, or ":memory:".
  /// \param generation  when it changes, this connection is lost
  /// \throws DatabaseError (5171 for a file that is no database)
  SqliteDatabase(const QString& name, const QString& file, std::shared_ptr<const std::atomic<int>> generation);
  SqliteDatabase(const SqliteDatabase&) = delete;
  SqliteDatabase& operator=(const SqliteDatabase&) = delete;

  /// Puts its own handlers back after somebody set others on the SQLite connection.
  void InstallHandlers();

  [[nodiscard]] sqlite3* Handle() const { return file_.Handle(); }
  [[nodiscard]] const QString& Name() const { return name_; }
  [[nodiscard]] const QString& File() const { return path_; }

  /// Begins a call: starts its time, and forgets an interruption that came too late.
  /// \throws DatabaseError when the connection is lost
  void BeginCall();
  /// Gives the running call its full time again, for the next row of a result.
  void RenewTime() { deadline_ = 0; }
  void SetTimeout(int seconds) { timeoutSeconds_ = seconds; }
  [[nodiscard]] bool Lost() const { return *generation_ != bornIn_; }

  /// May be called from any thread.
  void Interrupt() { interrupted_ = true; }
  void ForgetInterruption() { interrupted_ = false; }
  /// For calls too short to be stopped while they run. \throws DatabaseError when it was interrupted since the call
  /// began
  void ThrowIfInterrupted();
  /// While set, nothing is interrupted. For rolling back.
  void Shield(bool on) { shielded_ = on; }

  /// Runs a statement without a result.
  /// \throws DatabaseError
  void Run(const char* sql);

  /// \throws DatabaseError for the last failure
  [[noreturn]] void Fail(int code, const QString& statement = {});
  /// The last failure. Call it before another statement runs.
  [[nodiscard]] DatabaseError Error(const SqliteFailure& failure, const QString& statement = {}) const;

 private:
  [[nodiscard]] bool MustStop();
  static int OnProgress(void* self);
  static int OnBusy(void* self, int count);

  QString name_;
  QString path_;
  SqliteFile file_;
  std::shared_ptr<const std::atomic<int>> generation_;
  int bornIn_;
  int timeoutSeconds_ = 30;
  qint64 deadline_ = 0;  // milliseconds of the steady clock; 0: set at the next check
  std::atomic<bool> interrupted_ = false;
  bool shielded_ = false;
  StopReason stopped_ = StopReason::kNone;
};

}  // namespace qbx
