#include "troubled_session.h"

#include <chrono>
#include <condition_variable>

#include "database/embedded/errors.h"
#include "database/server_errors.h"
#include "database/session_wrapper.h"

namespace qbx::scenario {
namespace {

constexpr int kMissingProcedure = 2812;
constexpr int kRaisedError = 50000;  // a server's number for errors that procedures raise

QString FirstWord(const QString& batch) {
  qsizetype end = 0;
  while (end < batch.size() && (batch[end].isLetterOrNumber() || batch[end] == QLatin1Char('_')))
    ++end;
  return batch.left(end).toLower();
}

class TroubledSession final : public SessionWrapper {
 public:
  TroubledSession(std::unique_ptr<Session> inner, Troubles& troubles)
      : SessionWrapper(std::move(inner)), troubles_(troubles) {}

  std::unique_ptr<RowSource> Execute(const QString& batch) override {
    Suffer(batch);
    return SessionWrapper::Execute(batch);
  }
  std::unique_ptr<RowSource> Call(const QString& procedure, std::span<Parameter> parameters) override {
    Suffer(procedure);
    return SessionWrapper::Call(procedure, parameters);
  }
  std::vector<Parameter> DescribeProcedure(const QString& procedure) override {
    MissIfDropped(procedure);
    return SessionWrapper::DescribeProcedure(procedure);
  }
  void DeleteRow(const QString& table, const QString& keyColumn, const Value& key) override {
    Suffer(QStringLiteral("DELETE ") + table);
    SessionWrapper::DeleteRow(table, keyColumn, key);
  }
  void DeleteRows(const QString& table, const QString& keyColumn, std::span<const Value> keys) override {
    Suffer(QStringLiteral("DELETE ") + table);
    SessionWrapper::DeleteRows(table, keyColumn, keys);
  }
  void UpdateRow(const QString& table, const QString& keyColumn, const Value& key, std::span<const QString> columns,
                 std::span<const Value> values) override {
    Suffer(QStringLiteral("UPDATE ") + table);
    SessionWrapper::UpdateRow(table, keyColumn, key, columns, values);
  }
  void InsertRow(const QString& table, std::span<const QString> columns, std::span<const Value> values) override {
    Suffer(QStringLiteral("INSERT ") + table);
    SessionWrapper::InsertRow(table, columns, values);
  }
  bool IsAlive() override { return !troubles_.refuse && SessionWrapper::IsAlive(); }
  void Interrupt() override {
    SetInterrupted(true);
    wake_.notify_all();
    SessionWrapper::Interrupt();
  }
  void ForgetInterruption() override {
    SetInterrupted(false);
    SessionWrapper::ForgetInterruption();
  }

 protected:
  void Ask(const std::function<void()>& call) override {
    LoseIfRefused();
    call();
  }

 private:
  void SetInterrupted(bool interrupted) {
    const std::lock_guard guard(mutex_);
    interrupted_ = interrupted;
  }

  void LoseIfRefused() const {
    if (troubles_.refuse) throw LostConnectionError();
  }

  void MissIfDropped(const QString& what) const {
    if (!troubles_.IsDropped(what)) return;
    throw ServerError(kMissingProcedure,
                      QStringLiteral("Could not find stored procedure '%1'.").arg(what.section(QLatin1Char(' '), 0, 0)),
                      QStringLiteral("42000"));
  }

  void Suffer(const QString& what) {
    LoseIfRefused();
    troubles_.NoteCall(what);
    Delay();
    LoseIfRefused();
    MissIfDropped(what);
    const QString text = troubles_.FailureOf(what);
    if (!text.isEmpty()) throw ServerError(kRaisedError, text, QStringLiteral("42000"));
  }

  void Delay() {
    const int milliseconds = troubles_.delayMilliseconds;
    if (milliseconds <= 0) return;
    std::unique_lock guard(mutex_);
    interrupted_ = false;
    const bool stopped =
        wake_.wait_for(guard, std::chrono::milliseconds(milliseconds), [this] { return interrupted_; });
    if (!stopped) return;
    const QString text = QStringLiteral("Operation cancelled by user");
    throw DatabaseError(kCommandCancelled, text, {{0, QStringLiteral("HY008"), text}});
  }

  Troubles& troubles_;
  std::mutex mutex_;
  std::condition_variable wake_;
  bool interrupted_ = false;
};

}  // namespace

void Troubles::FailProcedure(const QString& name, const QString& text) {
  const std::lock_guard guard(mutex_);
  failing_[name.toLower()] = text;
}

QString Troubles::FailureOf(const QString& procedureOrBatch) const {
  const std::lock_guard guard(mutex_);
  return failing_.isEmpty() ? QString() : failing_.value(FirstWord(procedureOrBatch));
}

void Troubles::DropProcedure(const QString& name, bool dropped) {
  const std::lock_guard guard(mutex_);
  dropped_[name.toLower()] = dropped;
}

bool Troubles::IsDropped(const QString& procedureOrBatch) const {
  const std::lock_guard guard(mutex_);
  return !dropped_.isEmpty() && dropped_.value(FirstWord(procedureOrBatch));
}

void Troubles::NoteCall(const QString& procedureOrBatch) {
  const std::lock_guard guard(mutex_);
  calls_ += procedureOrBatch;
}

QStringList Troubles::Calls() const {
  const std::lock_guard guard(mutex_);
  return calls_;
}

void Troubles::Reset() {
  const std::lock_guard guard(mutex_);
  failing_.clear();
  dropped_.clear();
  calls_.clear();
  delayMilliseconds = 0;
  refuse = false;
}

SessionFactory WithTroubles(SessionFactory inner, Troubles& troubles) {
  return [inner = std::move(inner), &troubles](const ConnectionTarget& target, const Login& login,
                                               int timeout) -> std::unique_ptr<Session> {
    if (troubles.refuse)
      throw ServerError(17, QStringLiteral("SQL Server does not exist or access denied."), QStringLiteral("08001"));
    return std::make_unique<TroubledSession>(inner(target, login, timeout), troubles);
  };
}

}  // namespace qbx::scenario
