// A session with a SQL Server over ODBC.

#pragma once

#include <QHash>
#include <memory>

#include "database/odbc/odbc_link.h"
#include "database/odbc/odbc_statement.h"
#include "database/odbc/statement_text.h"
#include "database/session.h"

namespace qbx {

/// One statement at a time, each with a handle of its own that is freed once its rows are read. Only the rows of a
/// batch that is one SELECT are stepped as they are asked for; all others are read at once, since a procedure that is
/// given up half way would leave the rest undone.
///
/// Transactions are statements ("BEGIN TRANSACTION"), because the driver's own take one exchange more. When the server
/// undoes one by itself (a deadlock, say), nothing is let through until it is rolled back here as well.
class OdbcSession final : public Session {
 public:
  explicit OdbcSession(std::shared_ptr<OdbcLink> link) : link_(std::move(link)) {}
  /// Rows that are still open keep the connection, but not what was begun on it.
  ~OdbcSession() override;
  OdbcSession(const OdbcSession&) = delete;
  OdbcSession& operator=(const OdbcSession&) = delete;

  std::unique_ptr<RowSource> Execute(const QString& batch) override;
  std::unique_ptr<RowSource> Call(const QString& procedure, std::span<Parameter> parameters) override;
  /// Asks the server once for each procedure.
  [[nodiscard]] std::vector<Parameter> DescribeProcedure(const QString& procedure) override;

  void Begin() override;
  void Commit() override;
  void Rollback() override;
  [[nodiscard]] bool InTransaction() const override { return depth_ > 0; }

  void DeleteRow(const QString& table, const QString& keyColumn, const Value& key) override;
  /// One batch, whatever the number of rows, where the keys are whole numbers.
  void DeleteRows(const QString& table, const QString& keyColumn, std::span<const Value> keys) override;
  void UpdateRow(const QString& table, const QString& keyColumn, const Value& key, std::span<const QString> columns,
                 std::span<const Value> values) override;
  void InsertRow(const QString& table, std::span<const QString> columns, std::span<const Value> values) override;

  void SetCommandTimeout(int seconds) override { link_->SetTimeLimit(seconds); }
  /// The driver notices a lost connection only when it is used, so the server is asked, unless it answered a moment
  /// ago.
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
  bool doomed_ = false;  // the transaction was undone under the hands of those who began it
};

}  // namespace qbx
