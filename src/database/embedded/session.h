// A session with a database of the embedded engine.

#pragma once

#include <memory>

#include "database/embedded/database_files.h"
#include "database/embedded/prepared.h"
#include "database/embedded/procedures.h"
#include "database/embedded/translator.h"
#include "database/session.h"

namespace qbx {

/// Takes statements written for SQL Server. Unless a transaction was begun, each statement runs in its own, and so does
/// each procedure. The rows of a statement that only reads are read when they are asked for, and stay valid when the
/// session is closed.
class EmbeddedSession final : public Session {
 public:
  EmbeddedSession(std::shared_ptr<SqliteDatabase> database, std::shared_ptr<const DatabaseFiles> files);
  ~EmbeddedSession() override;
  EmbeddedSession(const EmbeddedSession&) = delete;
  EmbeddedSession& operator=(const EmbeddedSession&) = delete;

  std::unique_ptr<RowSource> Execute(const QString& batch) override;
  std::unique_ptr<RowSource> Call(const QString& procedure, std::span<Parameter> parameters) override;
  [[nodiscard]] std::vector<Parameter> DescribeProcedure(const QString& procedure) override;

  void Begin() override;
  void Commit() override;
  void Rollback() override;
  [[nodiscard]] bool InTransaction() const override { return depth_ > 0; }

  void DeleteRow(const QString& table, const QString& keyColumn, const Value& key) override;
  void UpdateRow(const QString& table, const QString& keyColumn, const Value& key, std::span<const QString> columns,
                 std::span<const Value> values) override;
  void InsertRow(const QString& table, std::span<const QString> columns, std::span<const Value> values) override;

  void SetCommandTimeout(int seconds) override { database_->SetTimeout(seconds); }
  [[nodiscard]] bool IsAlive() override { return !database_->Lost(); }
  void Interrupt() override { database_->Interrupt(); }
  void ForgetInterruption() override { database_->ForgetInterruption(); }

 private:
  template <typename Work>
  auto Guarded(Work&& work);
  void BeginTransaction();
  void CommitTransaction();

  [[nodiscard]] std::unique_ptr<RowSource> RunStatement(Tokens statement, bool last);
  [[nodiscard]] std::unique_ptr<RowSource> RunSql(Tokens statement, bool last);
  [[nodiscard]] std::unique_ptr<RowSource> RunCall(const WrittenCall& call);
  [[nodiscard]] std::unique_ptr<RowSource> RunProcedure(StoredProcedure& procedure, const std::vector<Value>& values);
  [[nodiscard]] std::unique_ptr<RowSource> HelpFile();
  [[nodiscard]] StatementLease DeleteStatement(const QString& table, const QString& keyColumn);

  std::shared_ptr<SqliteDatabase> database_;
  std::shared_ptr<const DatabaseFiles> files_;
  StatementCache statements_;
  ProcedureCatalogue procedures_;
  std::vector<Token> tokens_;
  int depth_ = 0;
  bool doomed_ = false;  // the transaction was rolled back, but whoever began it does not know
  QString deleteTable_;
  QString deleteKey_;
  std::string deleteSql_;
};

}  // namespace qbx
