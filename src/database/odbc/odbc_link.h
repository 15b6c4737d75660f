// One connection with a server, and what concerns every call over it: whose turn it is, how long it may take, whether
// somebody wants it to end, and whether the connection is still there.

#pragma once

#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "database/odbc/odbc_handles.h"
#include "database/odbc/watchdog.h"

namespace qbx {

class OpenRows;

/// Counts exchanges with servers: each is a wait for the network.
using RoundTrips = std::atomic<qint64>;

class OdbcLink {
 public:
  /// Connects.
  /// \param text  for the driver; overwritten
  /// \throws OdbcFailure
  OdbcLink(const QString& text, int loginTimeoutSeconds, RoundTrips& roundTrips);
  ~OdbcLink();
  OdbcLink(const OdbcLink&) = delete;
  OdbcLink& operator=(const OdbcLink&) = delete;

  [[nodiscard]] const OdbcHandle& Handle() const { return connection_; }
  /// Whether the driver fetches piece by piece anywhere in a row.
  [[nodiscard]] bool DataAnywhere() const { return dataAnywhere_; }
  [[nodiscard]] bool IsDead() const { return dead_; }
  /// When the server last answered.
  [[nodiscard]] std::chrono::steady_clock::time_point Answered() const { return answered_; }

  [[nodiscard]] int TimeLimit() const { return timeLimit_; }
  void SetTimeLimit(int seconds) { timeLimit_ = seconds; }
  /// What is left of the time limit of a statement; nothing when there is no limit.
  [[nodiscard]] std::optional<std::chrono::nanoseconds> TimeLeftSince(
      std::chrono::steady_clock::time_point started) const;

  void Interrupt();
  void ForgetInterruption() { interrupted_ = false; }

  /// Whether something failed since this was asked last: then the server may have undone the transaction.
  [[nodiscard]] bool TakeFailed() { return std::exchange(failed_, false); }

  /// Ends a call that failed.
  /// \param records  of the handle that was called, read before anything else was
  /// \throws DatabaseError
  [[noreturn]] void Fail(const std::vector<NativeError>& records);

  /// Ends the connection, so that the server undoes what is open. No statement may live.
  void GiveUp();

  enum class MayInterrupt { kYes, kNo };

  /// While one lives the statement is the running one.
  class Turn {
   public:
    /// \param exchanges  with the server that the call takes
    /// \param mayInterrupt  no: it has to come to its end, but for its time limit
    /// \throws DatabaseError  when the connection is dead, or an interruption is waiting
    Turn(OdbcLink& link, const OdbcHandle& statement, int exchanges, MayInterrupt mayInterrupt = MayInterrupt::kYes);
    /// For fetching what a statement left at the server.
    /// \param left  of the statement's time limit; none: no limit
    Turn(OdbcLink& link, const OdbcHandle& statement, std::optional<std::chrono::nanoseconds> left,
         MayInterrupt mayInterrupt);
    ~Turn();
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

   private:
    void Start(const OdbcHandle& statement, MayInterrupt mayInterrupt);

    OdbcLink& link_;
    bool exchanges_;
    bool watched_;
  };

  /// The rows that are stepped now; null: none.
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
  bool failed_ = false;
  int timeLimit_ = 0;
  std::chrono::steady_clock::time_point answered_;
  std::atomic<bool> interrupted_ = false;
  std::mutex runningMutex_;  // the handle against an interruption while it is freed
  SQLHANDLE running_ = nullptr;
  bool mayInterrupt_ = true;
  bool timedOut_ = false;
  std::chrono::steady_clock::time_point cancelled_ = {};  // when the running statement was cancelled last
  Watchdog watchdog_;                                     // the last member: it uses those above
};

}  // namespace qbx
