// The shared connection: how it is opened, its time-outs, its error list, and what runs on its thread.

#pragma once

#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "database/database_error.h"
#include "database/server_wait.h"
#include "database/session.h"

namespace qbx {

/// A connection string taken apart: "Provider=SQLOLEDB;...;Data Source=SERVER;Initial Catalog=DATABASE;". It never
/// holds a login.
struct ConnectionTarget {
  QString server;  ///< as in the string, with the instance
  QString database;

  [[nodiscard]] static ConnectionTarget Parse(const QString& connectionString);
};

struct Login {
  QString user;
  QString password;
};

/// Opens a session with a target, or throws DatabaseError.
using SessionFactory = std::function<std::unique_ptr<Session>(const ConnectionTarget& target, const Login& login,
                                                              int connectionTimeoutSeconds)>;

/// One connection to the server. It remembers its string and login, so that it can be opened again in the same way, and
/// the provider errors of the last failure. Only the thread that owns it calls it, one call at a time. While that
/// thread waits in `RunLong`, the work uses it instead.
class Connection {
 public:
  explicit Connection(SessionFactory factory);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// \throws DatabaseError
  void Open(const QString& connectionString, const Login& login);
  /// Opens again with the last string and login. While the server is away it tries again after 1, 2, 3 and 5 seconds,
  /// but begins no attempt later than 15 seconds after the first. After a re-opening that failed, the next ones try
  /// once, until one succeeds.
  /// \throws DatabaseError
  void Reopen();
  /// Opens again when the server does not answer any more. Does nothing inside a transaction, which is lost as a whole,
  /// and nothing for a connection that was never open.
  /// \return whether it was opened again
  /// \throws DatabaseError
  bool ReopenIfLost();
  void Close();
  /// For a connection that did not lead to the host database: until it is opened again, statements fail without a
  /// message.
  void CountAsNeverOpen() { wasOpen_ = false; }

  /// Refuses all further work, because the program ends: the connection counts as closed and as never open. The session
  /// stays, so that an open transaction can still be rolled back.
  void StopWork() { stopped_ = true; }
  /// Allows work again, for the cleaning up at the very end.
  void ResumeWork() { stopped_ = false; }

  [[nodiscard]] bool IsOpen() const { return session_ != nullptr && !stopped_; }
  /// How many sessions have been opened so far. It tells the open session from all earlier ones.
  [[nodiscard]] int SessionsOpened() const { return sessionsOpened_; }
  /// Whether it was open and the server does not answer now. Asks the server.
  [[nodiscard]] bool IsLost();
  /// Whether it was open, and could not be opened again after it was lost. Asks nobody.
  [[nodiscard]] bool IsAway() const { return WasOpen() && session_ == nullptr; }
  /// Whether it was ever open and is not stopped. Without that, statements fail without a message.
  [[nodiscard]] bool WasOpen() const { return wasOpen_ && !stopped_; }

  /// `told` is called after each re-opening, on the thread that asked for it.
  void OnReopened(std::function<void()> told) { reopened_ = std::move(told); }
  /// How this waits for the server, on the thread that asked for it. Without it each re-opening tries once.
  void OnWaiting(BeginWaiting begin) { beginWaiting_ = std::move(begin); }

  [[nodiscard]] bool InTransaction() const { return session_ && session_->InTransaction(); }
  /// Calls `act` now, or, inside a transaction, when its outermost `Transaction` has ended. For what waits for the
  /// user: on a server, others wait for the rows that a transaction has changed.
  void AfterTransaction(std::function<void()> act);

  [[nodiscard]] int CommandTimeout() const { return commandTimeout_; }
  void SetCommandTimeout(int seconds);
  void SetConnectionTimeout(int seconds) { connectionTimeout_ = seconds; }

  /// The server and database that it was opened with last.
  [[nodiscard]] ConnectionTarget Target() const { return ConnectionTarget::Parse(connectionString_); }

  /// The open session.
  /// \throws DatabaseError with kUnspecifiedError when the connection is closed; the error of a lost connection when it
  ///         was open before
  [[nodiscard]] Session& Driver();

  /// The provider errors of the last failure, for the interpretation.
  [[nodiscard]] const std::vector<ProviderError>& Errors() const { return errors_; }
  void KeepErrors(const DatabaseError& error) { errors_ = error.Errors(); }

  /// Runs `work` on the database thread. The caller waits and calls `pump` every 10 ms. An exception of `work` is
  /// thrown again here. `work` must not touch the user interface. Short work is not delayed, and `pump` is not called
  /// for it.
  /// \param pump       may be empty
  /// \param cancelled  asked between the calls of `pump`; while it is true, the running database call and all later
  ///                   ones are interrupted; may be empty
  void RunLong(const std::function<void()>& work, const std::function<void()>& pump,
               const std::function<bool()>& cancelled);

 private:
  friend class Transaction;

  [[nodiscard]] WaitForServer Waiting(MayCancel mayCancel) const;
  void OpenPatiently();
  void InterruptSession();
  void TransactionEnded();

  SessionFactory factory_;
  std::unique_ptr<Session> session_;
  std::mutex sessionMutex_;  // held to interrupt, or to replace the session
  QString connectionString_;
  Login login_;
  int commandTimeout_ = 20;
  int connectionTimeout_ = 15;
  int sessionsOpened_ = 0;
  bool wasOpen_ = false;
  bool stopped_ = false;
  bool patient_ = true;  // whether a re-opening waits for the server
  std::function<void()> reopened_;
  BeginWaiting beginWaiting_;
  std::vector<std::function<void()>> afterTransaction_;
  std::vector<ProviderError> errors_;
};

/// A transaction that rolls back unless it was committed.
class Transaction {
 public:
  enum class IfLost {
    kReopen,  ///< open a lost connection again and begin there: nothing of the transaction has been done yet
    kFail,    ///< for a thread that may not open it, or where something belongs to the session
  };
  /// \throws DatabaseError
  explicit Transaction(Connection& connection, IfLost ifLost = IfLost::kReopen)
      : session_(Begun(connection, ifLost)), connection_(&connection) {}
  /// For a session that no `Connection` holds.
  explicit Transaction(Session& session) : session_(session) { session_.Begin(); }
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  void Commit() {
    session_.Commit();
    done_ = true;
  }

 private:
  [[nodiscard]] static Session& Begun(Connection& connection, IfLost ifLost);

  Session& session_;
  Connection* connection_ = nullptr;
  bool done_ = false;
};

}  // namespace qbx
