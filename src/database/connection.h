// The shared connection: how it is opened, its time-outs, its error list, and what runs on its thread.

#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "database/database_error.h"
#include "database/session.h"

namespace qbx {

/// A connection string taken apart: "Provider=SQLOLEDB;...;Data Source=SERVER;Initial Catalog=DATABASE;". It never
/// holds a login.
struct ConnectionTarget {
  QString server;  ///< as in the string, instance suffix included
  QString database;

  [[nodiscard]] static ConnectionTarget Parse(const QString& connectionString);
};

struct Login {
  QString user;
  QString password;
};

/// Makes a session for a target, or throws DatabaseError.
using SessionFactory = std::function<std::unique_ptr<Session>(const ConnectionTarget& target, const Login& login,
                                                              int connectionTimeoutSeconds)>;

/// One connection of the client library: remembers its string and login, so that it can be re-opened as it was, and the
/// provider errors of the last failure. All calls from the thread that owns it, one at a time; the work of `RunLong`
/// uses it in that thread's stead while it waits.
class Connection {
 public:
  explicit Connection(SessionFactory factory);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// \throws DatabaseError
  void Open(const QString& connectionString, const Login& login);
  /// Opens again with the last string and login.
  /// \throws DatabaseError
  void Reopen();
  /// Opens again when the server no longer answers. Nothing is done inside a transaction, which is lost as a whole, nor for a connection
  /// that never was open.
  /// \return whether it was opened again
  /// \throws DatabaseError
  bool ReopenIfLost();
  void Close();
  /// For a connection that did not lead to the host database: statements fail softly until it is opened again.
  void CountAsNeverOpen() { wasOpen_ = false; }

  /// Lets nothing through any more, since the program ends: it counts as never open, and as closed. The session stays for a transaction that is still to
  /// be rolled back.
  void StopWork() { stopped_ = true; }
  /// For what is tidied up at the very end.
  void ResumeWork() { stopped_ = false; }

  [[nodiscard]] bool IsOpen() const { return session_ != nullptr && !stopped_; }
  /// Whether it was ever open (and that counts); until then statements fail softly.
  [[nodiscard]] bool WasOpen() const { return wasOpen_ && !stopped_; }

  /// Called after each re-opening, on the thread that asked for it.
  void OnReopened(std::function<void()> told) { reopened_ = std::move(told); }

  [[nodiscard]] int CommandTimeout() const { return commandTimeout_; }
  void SetCommandTimeout(int seconds);
  void SetConnectionTimeout(int seconds) { connectionTimeout_ = seconds; }

  /// What it was opened to last.
  [[nodiscard]] ConnectionTarget Target() const { return ConnectionTarget::Parse(connectionString_); }

  /// The open session.
  /// \throws DatabaseError with kUnspecifiedError when the connection is closed
  [[nodiscard]] Session& Driver();

  /// The provider errors of the last failure, for the interpretation.
  [[nodiscard]] const std::vector<ProviderError>& Errors() const { return errors_; }
  void KeepErrors(const DatabaseError& error) { errors_ = error.Errors(); }

  /// Runs `work` on the database thread while the caller waits and `pump` is called over and over; an exception of
  /// `work` is thrown again here. `work` must not touch the user interface. Work that is short is not delayed and not
  /// pumped for.
  /// \param pump       every 10 ms; may be empty
  /// \param cancelled  asked between pumps; while true, the running call and those that follow are interrupted; may be
  ///                   empty
  void RunLong(const std::function<void()>& work, const std::function<void()>& pump,
               const std::function<bool()>& cancelled);

 private:
  void InterruptSession();

  SessionFactory factory_;
  std::unique_ptr<Session> session_;
  std::mutex sessionMutex_;  // the pointer against an interruption while the work re-opens
  QString connectionString_;
  Login login_;
  int commandTimeout_ = 20;
  int connectionTimeout_ = 15;
  bool wasOpen_ = false;
  bool stopped_ = false;
  std::function<void()> reopened_;
  std::vector<ProviderError> errors_;
};

/// A transaction that rolls back unless it was committed.
class Transaction {
 public:
  explicit Transaction(Session& session) : session_(session) { session_.Begin(); }
  ~Transaction() {
    if (!done_) session_.Rollback();
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  void Commit() {
    session_.Commit();
    done_ = true;
  }

 private:
  Session& session_;
  bool done_ = false;
};

}  // namespace qbx
