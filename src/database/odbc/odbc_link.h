// One connection with a server, and what all its calls share: the running statement, the time limit, interruption, and
// whether the connection is lost.

#pragma once

#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "database/database_error.h"
#include "database/odbc/odbc_handles.h"
#include "database/odbc/watchdog.h"

namespace qbx {

class OpenRows;

/// Counts exchanges with servers. Each one waits for the network.
using RoundTrips = std::atomic<qint64>;

class OdbcLink {
 public:
  /// Connects.
  /// \param text  the connection string; its copy for the driver is overwritten, because it holds the password
  /// \throws OdbcFailure
  OdbcLink(const QString& text, int loginTimeoutSeconds, RoundTrips& roundTrips);
  ~OdbcLink();
  OdbcLink(const OdbcLink&) = delete;
  OdbcLink& operator=(const OdbcLink&) = delete;

  [[nodiscard]] const OdbcHandle& Handle() const { return connection_; }
  /// Whether the driver can fetch every column of a row piece by piece, not only those after the last bound one.
  [[nodiscard]] bool DataAnywhere() const { return dataAnywhere_; }
  [[nodiscard]] bool IsDead() const { return dead_; }

  [[nodiscard]] int TimeLimit() const { return timeLimit_; }
  void SetTimeLimit(int seconds) { timeLimit_ = seconds; }
  /// The rest of a statement's time limit; nothing when there is no limit.
  [[nodiscard]] std::optional<std::chrono::nanoseconds> TimeLeftSince(
      std::chrono::steady_clock::time_point started) const;

  void Interrupt();
  void ForgetInterruption() { interrupted_ = false; }

  /// The failure of a call since this was asked last. After one, the server may have rolled back the transaction.
  [[nodiscard]] std::optional<DatabaseError> TakeFailure() { return std::exchange(failure_, {}); }

  /// Throws the error of a failed call.
  /// \param records  of the called handle, read before any other call on it
  /// \throws DatabaseError
  [[noreturn]] void Fail(const std::vector<NativeError>& records);

  /// Ends the connection, so that the server rolls back the open transaction. No statement may exist.
  void GiveUp();

  enum class MayInterrupt { kYes, kNo };

  /// Makes a statement the running one, from construction to destruction.
  class Turn {
   public:
    /// \param exchanges     how many exchanges with the server the call takes
    /// \param mayInterrupt  kNo: only the time limit ends the call early
    /// \throws DatabaseError  when the connection is dead, or an interruption is pending
    Turn(OdbcLink& link, const OdbcHandle& statement, int exchanges, MayInterrupt mayInterrupt = MayInterrupt::kYes);
    /// For fetching the rest of a statement's rows from the server.
    /// \param left  the rest of the statement's time limit; none: no limit
    Turn(OdbcLink& link, const OdbcHandle& statement, std::optional<std::chrono::nanoseconds> left,
         MayInterrupt mayInterrupt);
    ~Turn();
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

   private:
    void Start(const OdbcHandle& statement, MayInterrupt mayInterrupt);

    OdbcLink& link_;
    bool watched_;
  };

  /// The rows that still need the connection; null: none.
  OpenRows* openRows = nullptr;

 private:
  void TimeIsOver();
  void Cancel();
  [[nodiscard]] bool DriverSaysDead() const;

  OdbcHandle environment_;
  OdbcHandle connection_;
  RoundTrips& roundTrips_;
  bool dataAnywhere_ = false;
  bool dead_ = false;
  std::optional<DatabaseError> failure_;
  int timeLimit_ = 0;
  std::atomic<bool> interrupted_ = false;
  std::mutex runningMutex_;  // keeps an interruption away from a handle that is being freed
  SQLHANDLE running_ = nullptr;
  bool mayInterrupt_ = true;
  bool timedOut_ = false;
  std::chrono::steady_clock::time_point cancelled_ = {};  // when the running statement was last cancelled
  Watchdog watchdog_;                                     // the last member, because it uses the others
};

}  // namespace qbx
