// A session with a SQL Server over ODBC.

#pragma once

#include <QHash>
#include <memory>
#include <optional>

#include "database/odbc/odbc_link.h"
#include "database/odbc/odbc_statement.h"
#include "database/odbc/statement_text.h"
#include "database/session.h"

namespace qbx {

/// Runs one statement at a time. Each statement has its own handle, which is freed after its rows are read. Only a
/// batch of one SELECT fetches its rows while the caller steps through them. All other results are read at once: a
/// procedure whose results are not read to the end does not do all its work.
///
/// Transactions are statements ("BEGIN TRANSACTION"), because the driver's own way takes one exchange more. When the
/// server rolls one back by itself, for example after a deadlock, every call fails until Rollback.
class OdbcSession final : public Session {
 public:
  explicit OdbcSession(std::shared_ptr<OdbcLink> link) : link_(std::move(link)) {}
  /// Rolls back the open transaction. Open rows keep the connection open, but not the transaction.
  ~OdbcSession() override;
  OdbcSession(const OdbcSession&) = delete;
  OdbcSession& operator=(const OdbcSession&) = delete;

  std::unique_ptr<RowSource> Execute(const QString& batch) override;
  std::unique_ptr<RowSource> Call(const QString& procedure, std::span<Parameter> parameters) override;
  /// Asks the server only once for each procedure.
  [[nodiscard]] std::vector<Parameter> DescribeProcedure(const QString& procedure) override;

  void Begin() override;
  void Commit() override;
  void Rollback() override;
  [[nodiscard]] bool InTransaction() const override { return depth_ > 0; }

  void DeleteRow(const QString& table, const QString& keyColumn, const Value& key) override;
  /// Sends one batch for all rows when all keys are whole numbers.
  void DeleteRows(const QString& table, const QString& keyColumn, std::span<const Value> keys) override;
  void UpdateRow(const QString& table, const QString& keyColumn, const Value& key, std::span<const QString> columns,
                 std::span<const Value> values) override;
  void InsertRow(const QString& table, std::span<const QString> columns, std::span<const Value> values) override;

  void SetCommandTimeout(int seconds) override { link_->SetTimeLimit(seconds); }
  /// Asks the server, unless it answered a moment ago: the driver does not notice a lost connection before its next
  /// use.
  [[nodiscard]] bool IsAlive() override;
  void Interrupt() override { link_->Interrupt(); }
  void ForgetInterruption() override { link_->ForgetInterruption(); }

 private:
  struct Sent {
    OdbcOutcome outcome;
    SQLLEN changedRows = -1;
  };
  Sent Send(const QString& sql, OdbcParameters& parameters, BatchKind kind = BatchKind::kOne,
            OdbcLink::MayInterrupt mayInterrupt = OdbcLink::MayInterrupt::kYes);
  Sent Send(const QString& sql, OdbcLink::MayInterrupt mayInterrupt = OdbcLink::MayInterrupt::kYes);
  [[nodiscard]] std::unique_ptr<RowSource> OpenRead(const QString& select);
  void SendBoundary(const QString& sql);
  void FreeConnection();
  void CheckTransaction();
  void ForgetWrongDescription(const QString& procedure, const DatabaseError& error);

  std::shared_ptr<OdbcLink> link_;
  QHash<QString, std::vector<Parameter>> described_;
  int depth_ = 0;
  bool doomed_ = false;                    // the server rolled back the transaction, and Rollback was not called yet
  std::optional<DatabaseError> doomedBy_;  // why, for all that comes later in the transaction
};

}  // namespace qbx
