#include "database/patient_session.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <list>
#include <optional>
#include <thread>

#include "database/kept_rows.h"
#include "database/pump_interval.h"
#include "database/server_errors.h"
#include "database/session_wrapper.h"

namespace qbx {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// Most calls are answered sooner. Events do not run during a quick statement, so no input is dropped.
constexpr auto kPatience = milliseconds(20);
// So many rows come with the answer. They are read at once, since a run reads few rows several times for each message.
constexpr qint64 kQuickRows = 64;
// A server that works stops a call sooner. After that it counts as one that does not answer at all.
constexpr auto kStopPatience = milliseconds(1'000);

/// One thread that makes the calls of another thread, one at a time.
class Helper {
 public:
  explicit Helper(BeginWaiting begin) : begin_(std::move(begin)), thread_([this] { Serve(); }) {}
  ~Helper() {
    End();
    thread_.join();
  }
  Helper(const Helper&) = delete;
  Helper& operator=(const Helper&) = delete;

  /// Runs a call on the helper and waits. Throws what the call throws.
  /// \param call  owns all that it uses, unless `mayCancel` is kNo
  /// \param stop  makes the call fail soon if the server works; called when the user cancels
  /// \return false when the user cancelled and the call still runs. Then the helper makes no other call.
  [[nodiscard]] bool Do(std::function<void()> call, MayCancel mayCancel, const std::function<void()>& stop) {
    std::unique_lock lock(mutex_);
    call_ = std::move(call);
    failure_ = nullptr;
    // The lock is released before the other thread is woken, which would otherwise wait for it. A run makes several
    // calls for each message.
    lock.unlock();
    wake_.notify_one();
    WaitForServer wait;
    std::optional<steady_clock::time_point> end;
    std::exception_ptr pumpFailure;
    lock.lock();
    for (auto patience = kPatience; !answered_.wait_for(lock, patience, [this] { return !call_; });
         patience = kPumpInterval) {
      if (end && steady_clock::now() >= *end) return false;
      if (pumpFailure) continue;  // the call must end before what it refers to
      lock.unlock();
      try {
        if (!wait) wait = begin_(mayCancel);
        if (!wait(milliseconds(0)) && !end) {
          end = steady_clock::now() + (stop ? kStopPatience : milliseconds(0));
          if (stop) stop();
        }
      } catch (...) {
        pumpFailure = std::current_exception();
      }
      lock.lock();
    }
    lock.unlock();
    if (pumpFailure) std::rethrow_exception(pumpFailure);
    if (failure_) std::rethrow_exception(failure_);
    return true;
  }

  /// Ends the thread when its call has ended.
  void End() {
    {
      const std::lock_guard lock(mutex_);
      ending_ = true;
    }
    wake_.notify_one();
  }
  /// Gives the thread what its call uses, to destroy it at the end.
  void Own(std::unique_ptr<Session> session) {
    const std::lock_guard lock(mutex_);
    session_ = std::move(session);
  }
  [[nodiscard]] bool HasEnded() const { return ended_; }

 private:
  void Serve() {
    std::unique_lock lock(mutex_);
    for (;;) {
      wake_.wait(lock, [this] { return ending_ || call_; });
      if (ending_) break;
      lock.unlock();
      std::exception_ptr failure;
      try {
        call_();
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
    lock.unlock();
    session_.reset();
    ended_ = true;
  }

  BeginWaiting begin_;
  std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable answered_;
  std::function<void()> call_;
  std::exception_ptr failure_;
  std::unique_ptr<Session> session_;
  bool ending_ = false;
  std::atomic<bool> ended_ = false;
  std::thread thread_;  // the last member: the thread uses the members above
};

/// The helpers whose call was left to itself. The destructor waits for their calls, which have time limits.
class LeftHelpers {
 public:
  void Keep(std::unique_ptr<Helper> helper, std::unique_ptr<Session> session) {
    std::erase_if(helpers_, [](const std::unique_ptr<Helper>& each) { return each->HasEnded(); });
    helper->Own(std::move(session));
    helper->End();
    helpers_.push_back(std::move(helper));
  }

 private:
  std::list<std::unique_ptr<Helper>> helpers_;
};

/// What is left of a session whose call was left to itself: it is lost.
class LostSession final : public SessionWrapper {
 public:
  void Rollback() override {}
  [[nodiscard]] bool InTransaction() const override { return false; }
  void SetCommandTimeout(int) override {}
  [[nodiscard]] bool IsAlive() override { return false; }
  void Interrupt() override {}
  void ForgetInterruption() override {}

 protected:
  void Ask(const std::function<void()>&) override { throw LostConnectionError(); }
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

class PatientSession;

/// A result whose rows the helper reads when all of them are wanted at once.
class PatientRows final : public RowSource {
 public:
  /// \param session  expires with the session
  PatientRows(std::shared_ptr<RowSource> rows, std::weak_ptr<PatientSession*> session)
      : columns_(rows->Columns()), rows_(std::move(rows)), session_(std::move(session)) {}

  [[nodiscard]] const std::vector<Column>& Columns() const override { return columns_; }
  bool Next() override {
    stepped_ = true;
    return rows_ && rows_->Next();
  }
  [[nodiscard]] Cell At(int column) const override { return rows_->At(column); }
  [[nodiscard]] PackedRows* Packed() override;

 private:
  std::vector<Column> columns_;
  std::shared_ptr<RowSource> rows_;  // null when reading them failed
  std::weak_ptr<PatientSession*> session_;
  bool stepped_ = false;
};

class PatientSession final : public SessionWrapper {
 public:
  PatientSession(const SessionFactory& factory, const ConnectionTarget& target, const Login& login, int timeout,
                 const BeginWaiting& begin, std::shared_ptr<LeftHelpers> left)
      : left_(std::move(left)), helper_(std::make_unique<Helper>(begin)) {
    const auto made = std::make_shared<std::unique_ptr<Session>>();
    if (!helper_->Do([=] { *made = factory(target, login, timeout); }, MayCancel::kYes, {})) GiveUp();
    SetInner(std::move(*made));
  }

  std::unique_ptr<RowSource> Execute(const QString& batch) override {
    return Patient(AskPatiently<std::unique_ptr<RowSource>>([batch](Session& inner) { return inner.Execute(batch); }));
  }
  std::unique_ptr<RowSource> Call(const QString& procedure, std::span<Parameter> parameters) override {
    struct Called {
      std::unique_ptr<RowSource> rows;
      std::vector<Parameter> parameters;
    };
    Called called = AskPatiently<Called>(
        [procedure, given = std::vector<Parameter>(parameters.begin(), parameters.end())](Session& inner) {
          Called result{.rows = nullptr, .parameters = given};
          result.rows = inner.Call(procedure, result.parameters);
          return result;
        });
    std::ranges::move(called.parameters, parameters.begin());
    return Patient(std::move(called.rows));
  }
  [[nodiscard]] std::vector<Parameter> DescribeProcedure(const QString& procedure) override {
    return AskPatiently<std::vector<Parameter>>(
        [procedure](Session& inner) { return inner.DescribeProcedure(procedure); });
  }
  [[nodiscard]] bool IsAlive() override {
    return AskPatiently<bool>([](Session& inner) { return inner.IsAlive(); });
  }

  /// Reads the remaining rows of a result of this session.
  /// \param rows  in no other hands: they must not outlive the session, which a call that was left to itself destroys
  void ReadRest(std::shared_ptr<RowSource> rows, std::shared_ptr<KeptRows> into) {
    (void)AskPatiently<bool>([rows = std::move(rows), into = std::move(into)](Session&) {
      into->Read(*rows);
      return true;
    });
  }
  [[nodiscard]] bool IsOwner() const { return std::this_thread::get_id() == owner_; }

 protected:
  void Ask(const std::function<void()>& call) override {
    const OneAtATime turn(busy_);
    if (IsOwner() && helper_)
      (void)helper_->Do(call, MayCancel::kNo, {});
    else
      call();
  }

 private:
  [[nodiscard]] std::unique_ptr<RowSource> Patient(std::unique_ptr<RowSource> rows) {
    if (!rows || !IsOwner()) return rows;
    return std::make_unique<PatientRows>(std::move(rows), self_);
  }

  /// Makes a call that the user may cancel.
  template <typename Result>
  Result AskPatiently(std::function<Result(Session&)> call) {
    const OneAtATime turn(busy_);
    Session& inner = Inner();
    if (!IsOwner() || !helper_) return call(inner);
    auto result = std::make_shared<Result>();
    bool stopped = false;
    const auto stop = [&inner, &stopped] {
      stopped = true;
      inner.Interrupt();
    };
    bool answered = false;
    try {
      answered =
          helper_->Do([call = std::move(call), &inner, result] { *result = call(inner); }, MayCancel::kAsAround, stop);
    } catch (...) {
      if (stopped) inner.ForgetInterruption();  // the call may have failed for another reason
      throw;
    }
    if (!answered) {
      result.reset();  // rows must not outlive the session, which the helper destroys
      GiveUp();
    }
    if (stopped) inner.ForgetInterruption();
    return std::move(*result);
  }

  /// Leaves the running call to itself. The connection counts as lost.
  [[noreturn]] void GiveUp() {
    left_->Keep(std::move(helper_), TakeInner());
    SetInner(std::make_unique<LostSession>());
    const QString text = QStringLiteral("Operation cancelled by user");
    throw DatabaseError(kUnspecifiedError, text, {{0, QStringLiteral("HY008"), text}});
  }

  const std::shared_ptr<PatientSession*> self_ = std::make_shared<PatientSession*>(this);
  const std::thread::id owner_ = std::this_thread::get_id();
  std::atomic<bool> busy_ = false;
  std::shared_ptr<LeftHelpers> left_;
  std::unique_ptr<Helper> helper_;  // null when its call was left to itself
};

PackedRows* PatientRows::Packed() {
  if (stepped_ || !rows_) return nullptr;
  if (PackedRows* const packed = rows_->Packed()) return packed;
  const std::shared_ptr<PatientSession*> session = session_.lock();
  if (!session || !(*session)->IsOwner()) return nullptr;
  std::shared_ptr<RowSource> source = std::move(rows_);
  const auto kept = std::make_shared<KeptRows>(*source, kQuickRows);
  if (kept->Count() == kQuickRows) (*session)->ReadRest(std::move(source), kept);
  rows_ = kept;
  return rows_->Packed();
}

}  // namespace

SessionFactory PatientSessions(SessionFactory factory, BeginWaiting begin) {
  return [factory = std::move(factory), begin = std::move(begin), left = std::make_shared<LeftHelpers>()](
             const ConnectionTarget& target, const Login& login, int timeout) -> std::unique_ptr<Session> {
    return std::make_unique<PatientSession>(factory, target, login, timeout, begin, left);
  };
}

}  // namespace qbx
