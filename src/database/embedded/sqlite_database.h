// One SQLite connection with the limits of a session: time-out, interruption, being broken off.

#pragma once

#include <QString>
#include <atomic>
#include <memory>

#include "database/database_error.h"
#include "database/embedded/errors.h"
#include "sqlite/sqlite_file.h"

namespace qbx {

/// Shared by a session and the results it handed out, so that a result stays valid when its session is closed.
class SqliteDatabase {
 public:
  /// Opens a file that exists, or ":memory:".
  /// \param generation  compared with its value now: once it changes, this connection is lost
  /// \throws DatabaseError (5171 for a file that is no database)
  SqliteDatabase(const QString& name, const QString& file, std::shared_ptr<const std::atomic<int>> generation);
  SqliteDatabase(const SqliteDatabase&) = delete;
  SqliteDatabase& operator=(const SqliteDatabase&) = delete;

  /// Lets the limits act again after somebody put handlers of their own into the SQLite connection.
  void InstallHandlers();

  [[nodiscard]] sqlite3* Handle() const { return file_.Handle(); }
  [[nodiscard]] const QString& Name() const { return name_; }
  [[nodiscard]] const QString& File() const { return path_; }

  /// Begins a call: the time starts, an interruption that came too late is forgotten.
  /// \throws DatabaseError when the connection is lost
  void BeginCall();
  /// Gives the running call its full time again, as the reader of a result goes on to its next row.
  void RenewTime() { deadline_ = 0; }
  void SetTimeout(int seconds) { timeoutSeconds_ = seconds; }
  [[nodiscard]] bool Lost() const { return *generation_ != bornIn_; }

  /// From any thread.
  void Interrupt() { interrupted_ = true; }
  void ForgetInterruption() { interrupted_ = false; }
  /// \throws DatabaseError when it was interrupted since the call began; for calls too short to be stopped while they run
  void ThrowIfInterrupted();
  /// While set, nothing is interrupted: for rolling back.
  void Shield(bool on) { shielded_ = on; }

  /// Runs a statement without result.
  /// \throws DatabaseError
  void Run(const char* sql);

  /// \throws DatabaseError for the last failure
  [[noreturn]] void Fail(int code, const QString& statement = {});
  /// The last failure as it stands, before anything else runs.
  [[nodiscard]] DatabaseError Error(int code, const QString& statement = {}) const;
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
  qint64 deadline_ = 0;  // milliseconds of the steady clock; 0: taken at the next look
  std::atomic<bool> interrupted_ = false;
  bool shielded_ = false;
  StopReason stopped_ = StopReason::kNone;
};

}  // namespace qbx
