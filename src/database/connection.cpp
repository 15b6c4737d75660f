#include "database/connection.h"

#include <chrono>
#include <condition_variable>
#include <exception>
#include <thread>

#include "database/pump_interval.h"

namespace qbx {
namespace {

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
  wasOpen_ = true;
}

void Connection::Reopen() {
  Open(QString(connectionString_), Login(login_));
  if (reopened_) reopened_();
}

bool Connection::IsLost() {
  return WasOpen() && (session_ == nullptr || !session_->IsAlive());
}

bool Connection::ReopenIfLost() {
  if (!WasOpen() || (session_ && (session_->InTransaction() || session_->IsAlive()))) return false;
  Reopen();
  return true;
}

void Connection::TellTransactionEnded() {
  if (!transactionEnded_ || !IsOpen() || session_->InTransaction()) return;
  try {
    transactionEnded_();
  } catch (...) {  // the end of the transaction stands, whatever the listener does
  }
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
  if (!IsOpen()) {
    const QString text = QStringLiteral("The connection is closed.");
    throw DatabaseError(kUnspecifiedError, text, {{0, QStringLiteral("08003"), text}});
  }
  return *session_;
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

void Connection::InterruptSession() {
  const std::lock_guard lock(sessionMutex_);
  if (session_) session_->Interrupt();
}

}  // namespace qbx
