// A session around another one.

#pragma once

#include <functional>

#include "database/session.h"

namespace qbx {

/// Forwards every call. A call that asks the server goes through `Ask`. A subclass decides there how it is made: on
/// another thread, delayed, or not at all.
class SessionWrapper : public Session {
 public:
  std::unique_ptr<RowSource> Execute(const QString& batch) override {
    return Get<std::unique_ptr<RowSource>>([&] { return inner_->Execute(batch); });
  }
  std::unique_ptr<RowSource> Call(const QString& procedure, std::span<Parameter> parameters) override {
    return Get<std::unique_ptr<RowSource>>([&] { return inner_->Call(procedure, parameters); });
  }
  [[nodiscard]] std::vector<Parameter> DescribeProcedure(const QString& procedure) override {
    return Get<std::vector<Parameter>>([&] { return inner_->DescribeProcedure(procedure); });
  }
  void Begin() override {
    Ask([this] { inner_->Begin(); });
  }
  void Commit() override {
    Ask([this] { inner_->Commit(); });
  }
  void Rollback() override {
    bool done = false;
    try {
      Ask([&] {
        done = true;
        inner_->Rollback();
      });
    } catch (...) {  // thrown by the subclass around the call
    }
    if (!done) inner_->Rollback();
  }
  [[nodiscard]] bool InTransaction() const override { return inner_->InTransaction(); }
  void DeleteRow(const QString& table, const QString& keyColumn, const Value& key) override {
    Ask([&] { inner_->DeleteRow(table, keyColumn, key); });
  }
  void DeleteRows(const QString& table, const QString& keyColumn, std::span<const Value> keys) override {
    Ask([&] { inner_->DeleteRows(table, keyColumn, keys); });
  }
  void UpdateRow(const QString& table, const QString& keyColumn, const Value& key, std::span<const QString> columns,
                 std::span<const Value> values) override {
    Ask([&] { inner_->UpdateRow(table, keyColumn, key, columns, values); });
  }
  void InsertRow(const QString& table, std::span<const QString> columns, std::span<const Value> values) override {
    Ask([&] { inner_->InsertRow(table, columns, values); });
  }
  void SetCommandTimeout(int seconds) override { inner_->SetCommandTimeout(seconds); }
  [[nodiscard]] bool IsAlive() override {
    return Get<bool>([this] { return inner_->IsAlive(); });
  }
  void Interrupt() override { inner_->Interrupt(); }
  void ForgetInterruption() override { inner_->ForgetInterruption(); }

 protected:
  explicit SessionWrapper(std::unique_ptr<Session> inner = {}) : inner_(std::move(inner)) {}
  void SetInner(std::unique_ptr<Session> inner) { inner_ = std::move(inner); }
  [[nodiscard]] Session& Inner() const { return *inner_; }
  [[nodiscard]] std::unique_ptr<Session> TakeInner() { return std::move(inner_); }

  /// Makes the call. When it is a rollback, an exception of the subclass is swallowed, and the rollback is made in any
  /// case.
  virtual void Ask(const std::function<void()>& call) = 0;

 private:
  template <typename Result>
  Result Get(const std::function<Result()>& call) {
    Result result = {};
    Ask([&] { result = call(); });
    return result;
  }

  std::unique_ptr<Session> inner_;
};

}  // namespace qbx
