#include "database/connection.h"

#include <array>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <thread>
#include <utility>

#include "database/pump_interval.h"
#include "database/server_errors.h"

namespace qbx {
namespace {

using std::chrono::seconds;

constexpr std::array kWaits = {seconds(1), seconds(2), seconds(3), seconds(5)};  // for a server that restarts
constexpr auto kLastAttempt = seconds(15);

/// Runs work on a thread of its own. Every way out waits for the thread.
class Worker {
 public:
  explicit Worker(const std::function<void()>& work)
      : thread_([this, &work] {
          try {
            work();
          } catch (...) {
            failure_ = std::current_exception();
          }
          const std::lock_guard lock(mutex_);
          done_ = true;
          finished_.notify_one();
        }) {}
  ~Worker() {
    if (thread_.joinable()) thread_.join();
  }
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  /// \return whether it is done
  [[nodiscard]] bool WaitFor(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    return finished_.wait_for(lock, time, [this] { return done_; });
  }
  void Finish() {
    thread_.join();
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  std::mutex mutex_;
  std::condition_variable finished_;
  bool done_ = false;
  std::exception_ptr failure_;
  std::thread thread_;  // the last member: the thread uses the members above
};

}  // namespace

Connection::Connection(SessionFactory factory) : factory_(std::move(factory)) {}

Connection::~Connection() = default;

void Connection::Open(const QString& connectionString, const Login& login) {
  Close();
  connectionString_ = connectionString;
  login_ = login;
  try {
    std::unique_ptr<Session> session = factory_(ConnectionTarget::Parse(connectionString), login, connectionTimeout_);
    session->SetCommandTimeout(commandTimeout_);
    const std::lock_guard lock(sessionMutex_);
    session_ = std::move(session);
  } catch (const DatabaseError& error) {
    KeepErrors(error);
    throw;
  }
  ++sessionsOpened_;
  wasOpen_ = true;
  patient_ = true;
}

void Connection::Reopen() {
  OpenPatiently();
  if (!reopened_) return;
  const WaitForServer wait = Waiting(MayCancel::kNo);
  reopened_();
}

void Connection::OpenPatiently() {
  const auto started = std::chrono::steady_clock::now();
  const WaitForServer wait = Waiting(MayCancel::kYes);
  for (auto time = kWaits.begin();; ++time) {
    try {
      return Open(QString(connectionString_), Login(login_));
    } catch (const DatabaseError& error) {
      const bool mayTry = wait && patient_ && time != kWaits.end() && MayComeBack(error) &&
                          std::chrono::steady_clock::now() + *time <= started + kLastAttempt;
      patient_ = mayTry && wait(*time);
      if (!patient_) throw;
    }
  }
}

WaitForServer Connection::Waiting(MayCancel mayCancel) const {
  return beginWaiting_ ? beginWaiting_(mayCancel) : WaitForServer();
}

bool Connection::IsLost() {
  return WasOpen() && (session_ == nullptr || !session_->IsAlive());
}

bool Connection::ReopenIfLost() {
  if (InTransaction()) return false;
  const WaitForServer wait = Waiting(MayCancel::kYes);
  if (!IsLost()) return false;
  Reopen();
  return true;
}

void Connection::Close() {
  const std::lock_guard lock(sessionMutex_);
  session_.reset();
}

void Connection::SetCommandTimeout(int seconds) {
  commandTimeout_ = seconds;
  if (session_) session_->SetCommandTimeout(seconds);
}

Session& Connection::Driver() {
  if (session_ == nullptr && WasOpen()) throw LostConnectionError();
  if (!IsOpen()) {
    const QString text = QStringLiteral("The connection is closed.");
    throw DatabaseError(kUnspecifiedError, text, {{0, QStringLiteral("08003"), text}});
  }
  return *session_;
}

void Connection::AfterTransaction(std::function<void()> act) {
  if (!InTransaction()) return act();
  afterTransaction_.push_back(std::move(act));
}

void Connection::TransactionEnded() {
  if (InTransaction()) return;
  for (const auto& act : std::exchange(afterTransaction_, {}))
    act();
}

void Connection::RunLong(const std::function<void()>& work, const std::function<void()>& pump,
                         const std::function<bool()>& cancelled) {
  Worker worker(work);
  try {
    while (!worker.WaitFor(kPumpInterval)) {
      if (pump) pump();
      if (cancelled && cancelled()) InterruptSession();
    }
  } catch (...) {  // the work must end before what it refers to
    while (!worker.WaitFor(kPumpInterval))
      InterruptSession();
    throw;
  }
  if (session_) session_->ForgetInterruption();
  worker.Finish();
}

Transaction::~Transaction() {
  if (!done_) session_.Rollback();
  if (connection_ != nullptr) connection_->TransactionEnded();
}

Session& Transaction::Begun(Connection& connection, IfLost ifLost) {
  if (ifLost == IfLost::kReopen && connection.WasOpen() && !connection.InTransaction()) {
    const WaitForServer wait = connection.Waiting(MayCancel::kNo);
    try {
      return Begun(connection, IfLost::kFail);
    } catch (const DatabaseError&) {
      if (!connection.ReopenIfLost()) throw;
    }
  }
  Session& session = connection.Driver();
  session.Begin();
  return session;
}

void Connection::InterruptSession() {
  const std::lock_guard lock(sessionMutex_);
  if (session_) session_->Interrupt();
}

}  // namespace qbx
