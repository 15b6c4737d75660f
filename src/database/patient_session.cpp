#include "database/patient_session.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <thread>

#include "database/pump_interval.h"
#include "database/session_wrapper.h"

namespace qbx {
namespace {

using Pump = std::function<void()>;

// Most calls are answered sooner. Events do not run during a quick statement, so no input is dropped.
constexpr auto kPatience = std::chrono::milliseconds(20);

/// One thread that makes the calls of another thread, one at a time.
class Helper {
 public:
  explicit Helper(Pump pump) : pump_(std::move(pump)), thread_([this] { Serve(); }) {}
  ~Helper() {
    {
      const std::lock_guard lock(mutex_);
      ending_ = true;
    }
    wake_.notify_one();
    thread_.join();
  }
  Helper(const Helper&) = delete;
  Helper& operator=(const Helper&) = delete;

  /// Runs a call on the helper and waits. Throws what the call throws.
  void Do(const std::function<void()>& call) {
    std::unique_lock lock(mutex_);
    call_ = &call;
    failure_ = nullptr;
    // The lock is released before the other thread is woken, which would otherwise wait for it. A run makes several
    // calls for each message.
    lock.unlock();
    wake_.notify_one();
    lock.lock();
    std::exception_ptr pumpFailure;
    for (auto patience = kPatience; !answered_.wait_for(lock, patience, [this] { return call_ == nullptr; });
         patience = kPumpInterval) {
      if (pumpFailure) continue;  // the call must end before what it refers to
      lock.unlock();
      try {
        pump_();
      } catch (...) {
        pumpFailure = std::current_exception();
      }
      lock.lock();
    }
    if (pumpFailure) std::rethrow_exception(pumpFailure);
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  void Serve() {
    std::unique_lock lock(mutex_);
    for (;;) {
      wake_.wait(lock, [this] { return ending_ || call_ != nullptr; });
      if (ending_) return;
      const std::function<void()>* const call = call_;
      lock.unlock();
      std::exception_ptr failure;
      try {
        (*call)();
      } catch (...) {
        failure = std::current_exception();
      }
      lock.lock();
      failure_ = failure;
      call_ = nullptr;
      lock.unlock();
      answered_.notify_one();
      lock.lock();
    }
  }

  Pump pump_;
  std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable answered_;
  const std::function<void()>* call_ = nullptr;
  std::exception_ptr failure_;
  bool ending_ = false;
  std::thread thread_;  // the last member: the thread uses the members above
};

/// Refuses a call that comes while another one is running: whoever lets events run does not expect it.
class OneAtATime {
 public:
  explicit OneAtATime(std::atomic<bool>& busy) : busy_(busy) {
    if (!busy_.exchange(true)) return;
    const QString text = QStringLiteral("The database is still busy with the request before.");
    throw DatabaseError(kStatementFailed, text, {{0, QString(), text}});
  }
  ~OneAtATime() { busy_ = false; }
  OneAtATime(const OneAtATime&) = delete;
  OneAtATime& operator=(const OneAtATime&) = delete;

 private:
  std::atomic<bool>& busy_;
};

class PatientSession final : public SessionWrapper {
 public:
  PatientSession(const SessionFactory& factory, const ConnectionTarget& target, const Login& login, int timeout,
                 Pump pump)
      : helper_(std::move(pump)) {
    helper_.Do([&] { SetInner(factory(target, login, timeout)); });
  }

 protected:
  void Ask(const std::function<void()>& call) override {
    const OneAtATime turn(busy_);
    if (std::this_thread::get_id() == owner_)
      helper_.Do(call);
    else
      call();
  }

 private:
  const std::thread::id owner_ = std::this_thread::get_id();
  std::atomic<bool> busy_ = false;
  Helper helper_;
};

}  // namespace

SessionFactory PatientSessions(SessionFactory factory, std::function<void()> pump) {
  return [factory = std::move(factory), pump = std::move(pump)](const ConnectionTarget& target, const Login& login,
                                                                int timeout) -> std::unique_ptr<Session> {
    return std::make_unique<PatientSession>(factory, target, login, timeout, pump);
  };
}

}  // namespace qbx
