#include "database/patient_session.h"

#include <chrono>
#include <condition_variable>
#include <exception>
#include <thread>

namespace qbx {
namespace {

using Pump = std::function<void()>;

// Most calls are answered in less, and are then not pumped for: input is never dropped by a quick statement.
constexpr auto kPatience = std::chrono::milliseconds(20);
constexpr auto kPumpInterval = std::chrono::milliseconds(10);

/// One thread that works for another one, a call at a time.
class Helper {
 public:
  explicit Helper(Pump pump) : pump_(std::move(pump)), thread_([this] { Serve(); }) {}
  ~Helper() {
    {
      const std::lock_guard lock(mutex_);
      ending_ = true;
    }
    wake_.notify_all();
    thread_.join();
  }
  Helper(const Helper&) = delete;
  Helper& operator=(const Helper&) = delete;

  /// Runs a call on the helper and waits; what it throws is thrown here.
  void Do(const std::function<void()>& call) {
    std::unique_lock lock(mutex_);
    call_ = &call;
    failure_ = nullptr;
    wake_.notify_all();
    std::exception_ptr pumpFailure;
    for (auto patience = kPatience; !answered_.wait_for(lock, patience, [this] { return call_ == nullptr; });
         patience = kPumpInterval) {
      if (pumpFailure) continue;  // the call must not outlive what it refers to
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
      answered_.notify_all();
    }
  }

  Pump pump_;
  std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable answered_;
  const std::function<void()>* call_ = nullptr;
  std::exception_ptr failure_;
  bool ending_ = false;
  std::thread thread_;  // the last member: it uses those above
};

class PatientSession final : public Session {
 public:
  PatientSession(const SessionFactory& factory, const ConnectionTarget& target, const Login& login, int timeout,
                 Pump pump)
      : helper_(std::move(pump)) {
    helper_.Do([&] { inner_ = factory(target, login, timeout); });
  }

  std::unique_ptr<RowSource> Execute(const QString& batch) override {
    return Get<std::unique_ptr<RowSource>>([&] { return inner_->Execute(batch); });
  }
  std::unique_ptr<RowSource> Call(const QString& procedure, std::span<const Parameter> parameters) override {
    return Get<std::unique_ptr<RowSource>>([&] { return inner_->Call(procedure, parameters); });
  }
  [[nodiscard]] std::vector<Parameter> DescribeProcedure(const QString& procedure) override {
    return Get<std::vector<Parameter>>([&] { return inner_->DescribeProcedure(procedure); });
  }
  void Begin() override {
    Do([this] { inner_->Begin(); });
  }
  void Commit() override {
    Do([this] { inner_->Commit(); });
  }
  // Never throws, so it must not let events run, whose handlers could.
  void Rollback() override { inner_->Rollback(); }
  [[nodiscard]] bool InTransaction() const override { return inner_->InTransaction(); }
  void DeleteRow(const QString& table, const QString& keyColumn, const Value& key) override {
    Do([&] { inner_->DeleteRow(table, keyColumn, key); });
  }
  void UpdateRow(const QString& table, const QString& keyColumn, const Value& key, std::span<const QString> columns,
                 std::span<const Value> values) override {
    Do([&] { inner_->UpdateRow(table, keyColumn, key, columns, values); });
  }
  void InsertRow(const QString& table, std::span<const QString> columns, std::span<const Value> values) override {
    Do([&] { inner_->InsertRow(table, columns, values); });
  }
  void SetCommandTimeout(int seconds) override { inner_->SetCommandTimeout(seconds); }
  [[nodiscard]] bool IsAlive() override {
    return Get<bool>([this] { return inner_->IsAlive(); });
  }
  void Interrupt() override { inner_->Interrupt(); }
  void ForgetInterruption() override { inner_->ForgetInterruption(); }

 private:
  void Do(const std::function<void()>& call) {
    if (std::this_thread::get_id() == owner_)
      helper_.Do(call);
    else
      call();
  }
  template <typename Result>
  Result Get(const std::function<Result()>& call) {
    Result result = {};
    Do([&] { result = call(); });
    return result;
  }

  const std::thread::id owner_ = std::this_thread::get_id();
  Helper helper_;
  std::unique_ptr<Session> inner_;
};

}  // namespace

SessionFactory PatientSessions(SessionFactory factory, std::function<void()> pump) {
  return [factory = std::move(factory), pump = std::move(pump)](const ConnectionTarget& target, const Login& login,
                                                                int timeout) -> std::unique_ptr<Session> {
    return std::make_unique<PatientSession>(factory, target, login, timeout, pump);
  };
}

}  // namespace qbx
