#include "database/embedded/session.h"

#include <sqlite3.h>

#include "database/embedded/errors.h"
#include "database/embedded/rows.h"
#include "database/kept_rows.h"
#include "database/server_errors.h"

namespace qbx {
namespace {

std::string Quoted(const QString& name) {
  return QString(QLatin1Char('"') + QString(name).replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"'))
      .toStdString();
}

const DeclaredParameter* FindDeclared(const ProcedureHeader& header, const QString& name, std::size_t& index) {
  for (index = 0; index < header.parameters.size(); ++index) {
    if (header.parameters[index].name.compare(name, Qt::CaseInsensitive) == 0) return &header.parameters[index];
  }
  return nullptr;
}

/// Collects the values of a call: the given ones first, then defaults.
class Arguments {
 public:
  explicit Arguments(const ProcedureHeader& header)
      : header_(header), values_(header.parameters.size()), given_(header.parameters.size(), false) {}

  void Give(std::size_t index, const Value& value) {
    if (index >= values_.size()) {
      throw ServerError(8144,
                        QStringLiteral("Procedure or function %1 has too many arguments specified.").arg(header_.name));
    }
    values_[index] = ConvertArgument(header_.parameters[index], value);
    given_[index] = true;
  }

  void Give(const QString& name, const Value& value) {
    std::size_t index = 0;
    if (FindDeclared(header_, name, index) == nullptr) {
      throw ServerError(8145, QStringLiteral("%1 is not a parameter for procedure %2.").arg(name, header_.name));
    }
    Give(index, value);
  }

  [[nodiscard]] std::vector<Value> Complete() {
    for (std::size_t i = 0; i < values_.size(); ++i) {
      if (given_[i]) continue;
      const DeclaredParameter& parameter = header_.parameters[i];
      if (!parameter.defaultValue) {
        throw ServerError(201,
                          QStringLiteral("Procedure or function '%1' expects parameter '%2', which was not supplied.")
                              .arg(header_.name, parameter.name));
      }
      values_[i] = ConvertArgument(parameter, *parameter.defaultValue);
    }
    return std::move(values_);
  }

 private:
  const ProcedureHeader& header_;
  std::vector<Value> values_;
  std::vector<bool> given_;
};

}  // namespace

EmbeddedSession::EmbeddedSession(std::shared_ptr<SqliteDatabase> database, std::shared_ptr<const DatabaseFiles> files)
    : database_(std::move(database)), files_(std::move(files)), statements_(database_), procedures_(database_) {}

EmbeddedSession::~EmbeddedSession() {
  depth_ = std::min(depth_, 1);
  Rollback();
}

/// Runs the work of one call. When a failure rolls the open transaction back, as an interruption does, later calls in
/// that transaction are refused.
template <typename Work>
auto EmbeddedSession::Guarded(Work&& work) {
  try {
    database_->BeginCall();
    if (doomed_) throw ServerError(kTransactionDoomed, TransactionDoomedText());
    return work();
  } catch (const DatabaseError& error) {
    // SQLite rolls an interrupted write back by itself. It does not when a call is stopped before or between its
    // statements.
    const bool takesTransaction = database_->Lost() || error.Number() == kCommandCancelled;
    if (takesTransaction && sqlite3_get_autocommit(database_->Handle()) == 0) {
      database_->Shield(true);
      TryExecuteSql(database_->Handle(), "ROLLBACK");
      database_->Shield(false);
    }
    doomed_ = depth_ > 0 && sqlite3_get_autocommit(database_->Handle()) != 0;
    throw;
  }
}

std::unique_ptr<RowSource> EmbeddedSession::Execute(const QString& batch) {
  const QByteArray utf8 = batch.toUtf8();
  return Guarded([&] {
    Tokenize({utf8.constData(), static_cast<std::size_t>(utf8.size())}, tokens_);
    const std::vector<Tokens> statements = SplitStatements(tokens_);
    std::unique_ptr<RowSource> result;
    for (std::size_t i = 0; i < statements.size(); ++i) {
      std::unique_ptr<RowSource> rows = RunStatement(statements[i], i + 1 == statements.size());
      if (rows) result = std::move(rows);
    }
    return result;
  });
}

std::unique_ptr<RowSource> EmbeddedSession::RunStatement(Tokens statement, bool last) {
  switch (KindOf(statement)) {
    case StatementKind::kSql:
      return RunSql(statement, last);
    case StatementKind::kCall:
      return RunCall(ParseCall(statement));
    case StatementKind::kBegin:
      BeginTransaction();
      return nullptr;
    case StatementKind::kCommit:
      CommitTransaction();
      return nullptr;
    case StatementKind::kRollback:
      depth_ = std::min(depth_, 1);
      Rollback();
      return nullptr;
    case StatementKind::kAlterDatabase: {
      const StatusChange change = ParseStatusChange(statement);
      files_->SetStatus(change.database, change.status);
      return nullptr;
    }
  }
  return nullptr;
}

std::unique_ptr<RowSource> EmbeddedSession::RunSql(Tokens statement, bool last) {
  const SqlStatement translated = TranslateSql(statement);
  StatementLease lease = statements_.Get(translated.sql);
  int index = 0;
  for (const Token& literal : translated.literals)
    lease.Bind(++index, LiteralValue(literal));
  const bool lazy = last && lease->IsReadOnly();
  const bool atRow = lease.Step();
  if (!lease->HasColumns()) return nullptr;
  auto rows = std::make_unique<SqliteRows>(std::move(lease), true, atRow);
  if (lazy) return rows;
  return std::make_unique<KeptRows>(*rows);
}

std::unique_ptr<RowSource> EmbeddedSession::RunCall(const WrittenCall& call) {
  if (call.name.compare(QLatin1String("sp_helpfile"), Qt::CaseInsensitive) == 0) return HelpFile();
  const std::shared_ptr<StoredProcedure> procedure = procedures_.Find(call.name);
  Arguments arguments(procedure->Header());
  std::size_t position = 0;
  for (const auto& [name, value] : call.arguments) {
    if (name.isEmpty()) {
      arguments.Give(position++, value);
    } else {
      arguments.Give(name, value);
    }
  }
  return RunProcedure(*procedure, arguments.Complete());
}

std::unique_ptr<RowSource> EmbeddedSession::Call(const QString& name, std::span<Parameter> parameters) {
  return Guarded([&] {
    const std::shared_ptr<StoredProcedure> procedure = procedures_.Find(name);
    Arguments arguments(procedure->Header());
    for (const Parameter& parameter : parameters) {
      if (parameter.isSet && parameter.direction == ParameterDirection::kInput)
        arguments.Give(parameter.name, parameter.value);
    }
    return RunProcedure(*procedure, arguments.Complete());
  });
}

std::unique_ptr<RowSource> EmbeddedSession::RunProcedure(StoredProcedure& procedure, const std::vector<Value>& values) {
  if (depth_ > 0 || !procedure.Writes()) return procedure.Run(values);
  BeginTransaction();
  try {
    std::unique_ptr<RowSource> rows = procedure.Run(values);
    CommitTransaction();
    return rows;
  } catch (const DatabaseError&) {
    Rollback();
    throw;
  }
}

std::unique_ptr<RowSource> EmbeddedSession::HelpFile() {
  const bool master = DatabaseFiles::IsMaster(database_->Name());
  StatementLease lease = statements_.Get("SELECT ?1 AS name, 1 AS fileid, ?2 AS filename");
  lease.Bind(1, Value(database_->Name()));
  lease.Bind(2, Value(master ? files_->Folder() + QStringLiteral("master.mdf") : database_->File()));
  return std::make_unique<SqliteRows>(std::move(lease), false, false);
}

std::vector<Parameter> EmbeddedSession::DescribeProcedure(const QString& name) {
  return Guarded([&] {
    const std::shared_ptr<StoredProcedure> procedure = procedures_.Find(name);
    std::vector<Parameter> parameters;
    parameters.push_back({QStringLiteral("@RETURN_VALUE"), ValueType::kInt, 0, ParameterDirection::kReturnValue});
    for (const DeclaredParameter& declared : procedure->Header().parameters) {
      parameters.push_back({declared.name, declared.type, declared.size});
    }
    return parameters;
  });
}

void EmbeddedSession::BeginTransaction() {
  if (depth_ == 0) statements_.Get("BEGIN IMMEDIATE").Finish();
  ++depth_;
}

void EmbeddedSession::CommitTransaction() {
  if (depth_ == 0) {
    throw ServerError(3902, QStringLiteral("The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION."));
  }
  if (depth_ == 1) statements_.Get("COMMIT").Finish();
  --depth_;
}

void EmbeddedSession::Begin() {
  Guarded([this] { BeginTransaction(); });
}

void EmbeddedSession::Commit() {
  Guarded([this] { CommitTransaction(); });
}

void EmbeddedSession::Rollback() {
  if (depth_ == 0) return;
  database_->Shield(true);
  if (sqlite3_get_autocommit(database_->Handle()) == 0) TryExecuteSql(database_->Handle(), "ROLLBACK");
  database_->Shield(false);
  --depth_;
  doomed_ = depth_ > 0;
}

StatementLease EmbeddedSession::DeleteStatement(const QString& table, const QString& keyColumn) {
  if (table != deleteTable_ || keyColumn != deleteKey_ || deleteSql_.empty()) {
    deleteTable_ = table;
    deleteKey_ = keyColumn;
    deleteSql_ = "DELETE FROM " + Quoted(table) + " WHERE " + Quoted(keyColumn) + " = ?1";
  }
  return statements_.Get(deleteSql_);
}

void EmbeddedSession::DeleteRow(const QString& table, const QString& keyColumn, const Value& key) {
  Guarded([&] {
    StatementLease lease = DeleteStatement(table, keyColumn);
    lease.Bind(1, key);
    lease.Finish();
  });
}

void EmbeddedSession::UpdateRow(const QString& table, const QString& keyColumn, const Value& key,
                                std::span<const QString> columns, std::span<const Value> values) {
  Guarded([&] {
    std::string sql = "UPDATE " + Quoted(table) + " SET ";
    for (std::size_t i = 0; i < columns.size(); ++i) {
      sql += (i > 0 ? ", " : "") + Quoted(columns[i]) + " = ?" + std::to_string(i + 1);
    }
    sql += " WHERE " + Quoted(keyColumn) + " = ?" + std::to_string(columns.size() + 1);
    StatementLease lease = statements_.Get(sql);
    int index = 0;
    for (const Value& value : values)
      lease.Bind(++index, value);
    lease.Bind(++index, key);
    lease.Finish();
    if (sqlite3_changes(database_->Handle()) == 0) {
      throw ServerError(
          0, QStringLiteral(
                 "Row cannot be located for updating. Some values may have been changed since it was last read."));
    }
  });
}

void EmbeddedSession::InsertRow(const QString& table, std::span<const QString> columns, std::span<const Value> values) {
  Guarded([&] {
    std::string sql = "INSERT INTO " + Quoted(table);
    std::string places;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      sql += (i > 0 ? ", " : " (") + Quoted(columns[i]);
      places += (i > 0 ? ", ?" : "?") + std::to_string(i + 1);
    }
    sql += columns.empty() ? std::string(" DEFAULT VALUES") : ") VALUES (" + places + ")";
    StatementLease lease = statements_.Get(sql);
    int index = 0;
    for (const Value& value : values)
      lease.Bind(++index, value);
    lease.Finish();
  });
}

}  // namespace qbx
