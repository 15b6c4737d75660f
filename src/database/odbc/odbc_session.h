// A session with a SQL Server over ODBC.

#pragma once

#include <atomic>
#include <memory>
#include <mutex>

#include "database/connection.h"
#include "database/odbc/connection_string.h"
#include "database/odbc/instance_port.h"
#include "database/odbc/odbc_handles.h"
#include "database/session.h"

namespace qbx {

/// One statement at a time, each with a handle of its own that is freed once its rows are read.
class OdbcSession final : public Session {
 public:
  /// \throws DatabaseError
  OdbcSession(const ConnectionTarget& target, const Login& login, int loginTimeoutSeconds,
              const OdbcSettings& settings);
  ~OdbcSession() override;

  std::unique_ptr<RowSource> Execute(const QString& batch) override;
  std::unique_ptr<RowSource> Call(const QString& procedure, std::span<const Parameter> parameters) override;
  [[nodiscard]] std::vector<Parameter> DescribeProcedure(const QString& procedure) override;

  void Begin() override;
  void Commit() override;
  void Rollback() override;
  [[nodiscard]] bool InTransaction() const override { return depth_ > 0; }

  void DeleteRow(const QString& table, const QString& keyColumn, const Value& key) override;
  void UpdateRow(const QString& table, const QString& keyColumn, const Value& key, std::span<const QString> columns,
                 std::span<const Value> values) override;
  void InsertRow(const QString& table, std::span<const QString> columns, std::span<const Value> values) override;

  void SetCommandTimeout(int seconds) override { timeout_ = seconds; }
  [[nodiscard]] bool IsAlive() override { return !IsDead(); }
  void Interrupt() override;
  void ForgetInterruption() override { interrupted_ = false; }

 private:
  [[nodiscard]] bool IsDead() const;
  void SwitchAutocommit(bool on);
  void EndTransaction(SQLSMALLINT how);
  [[nodiscard]] std::unique_ptr<RowSource> LastResult(const OdbcHandle& statement, SQLRETURN ran);
  [[noreturn]] void Fail(const OdbcHandle& handle);

  OdbcHandle environment_;
  OdbcHandle connection_;
  int timeout_ = 20;
  int depth_ = 0;
  std::atomic<bool> interrupted_ = false;
  std::mutex runningMutex_;  // the handle against an interruption while it is freed
  SQLHANDLE running_ = nullptr;
};

}  // namespace qbx
