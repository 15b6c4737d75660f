#include "tds_server/statements.h"

#include "database/embedded/errors.h"
#include "tds_server/error_wording.h"
#include "tds_server/rewriting.h"

namespace qbx::tds {
namespace {

QString ContentOf(const Token& token) {
  return QString::fromStdString(token.Content());
}

/// The values that a server returns about itself.
std::optional<Value> Told(const QString& name, const ClientState& client) {
  const QString asked = name.toUpper();
  if (asked == QLatin1String("@@TRANCOUNT")) return Value(client.session.InTransaction() ? 1 : 0);
  if (asked == QLatin1String("@@ROWCOUNT")) return Value(client.lastCount);
  if (asked == QLatin1String("@@SPID")) return Value(client.number);
  if (asked == QLatin1String("@@DB_NAME")) return Value(client.database);
  if (asked == QLatin1String("@@ERROR")) return Value(0);
  if (asked == QLatin1String("@@SERVERNAME")) return Value(QStringLiteral("SANDBOX"));
  if (asked == QLatin1String("@@PRODUCTVERSION")) return Value(QStringLiteral("11.0.3000.0"));
  if (asked == QLatin1String("@@EDITION")) return Value(QStringLiteral("Sandbox"));
  if (asked == QLatin1String("@@VERSION")) return Value(QStringLiteral("Sandbox 11.0.3000.0 on the embedded engine"));
  if (asked == QLatin1String("@@IDENTITY")) {
    const auto rows = client.session.Execute(QStringLiteral("SELECT last_insert_rowid()"));
    return rows->Next() ? rows->At(0).ToValue() : Value();
  }
  return std::nullopt;
}

ValueOf Values(const Variables& variables, const ClientState& client) {
  return [&variables, &client](const QString& name) -> std::optional<Value> {
    if (name.startsWith(QLatin1String("@@"))) return Told(name, client);
    const Value* value = variables.Find(name);
    return value == nullptr ? std::nullopt : std::optional<Value>(*value);
  };
}

bool ChangesRows(Tokens statement) {
  return statement[0].IsWord("INSERT") || statement[0].IsWord("UPDATE") || statement[0].IsWord("DELETE");
}

}  // namespace

const Value* Variables::Find(const QString& name) const {
  const auto found = values_.find(name.toLower());
  return found == values_.end() ? nullptr : &found->second;
}

void UndoTransaction(Session& session) {
  while (session.InTransaction())
    session.Rollback();
}

void TellTransaction(ClientState& client, Answer& answer, bool committed) {
  const bool open = client.session.InTransaction();
  if (open == (client.transaction != 0)) return;
  if (open) {
    client.transaction = ++client.transactions;
    answer.TransactionBegun(client.transaction);
  } else {
    answer.TransactionEnded(client.transaction, committed);
    client.transaction = 0;
  }
  answer.SetInTransaction(open);
}

bool StatementRunner::Run(const QString& batch, Variables& variables, bool more) {
  const QByteArray utf8 = batch.toUtf8();
  std::vector<Token> tokens;
  Tokenize({utf8.constData(), static_cast<std::size_t>(utf8.size())}, tokens);
  const std::vector<Tokens> statements = CutBatch(tokens);
  bool good = true;
  if (statements.empty()) End({.more = more});
  for (std::size_t i = 0; i < statements.size(); ++i) {
    const Outcome outcome = RunOne(statements[i], variables, more || i + 1 < statements.size());
    good = good && outcome == Outcome::kDone;
    if (outcome != Outcome::kStop) continue;
    End({.more = more, .failed = true});
    return false;
  }
  return good;
}

StatementRunner::Outcome StatementRunner::RunOne(Tokens statement, Variables& variables, bool more) {
  try {
    if (!Passes(statement, variables) || SetsOption(statement)) {
      End({.more = more});
      return Outcome::kDone;
    }
    if (statement[0].IsWord("DECLARE")) {
      Declare(statement, variables);
      if (!more) End({});
      return Outcome::kDone;
    }
    if (statement[0].IsWord("SET")) {
      Assign(statement, variables);
      if (!more) End({});
      return Outcome::kDone;
    }
    if (statement[0].IsWord("USE") && statement.size() == 2) {
      if (ContentOf(statement[1]).compare(client_.database, Qt::CaseInsensitive) != 0)
        throw ServerError(911,
                          QStringLiteral("Database '%1' does not exist. Make sure that the name is entered correctly.")
                              .arg(ContentOf(statement[1])));
      answer_.Database(client_.database, client_.database);
      End({.more = more});
      return Outcome::kDone;
    }
    if (KindOf(statement) == StatementKind::kCall) return RunExec(statement, variables, more);
    return RunSql(statement, variables, more);
  } catch (const DatabaseError& error) {
    const Outcome outcome = Report(error);
    if (outcome == Outcome::kFailed) End({.more = more, .failed = true});
    return outcome;
  }
}

/// Tests the condition before a statement. Clients only send IF @@TRANCOUNT > 0.
/// \param statement  loses the condition
bool StatementRunner::Passes(Tokens& statement, const Variables& variables) {
  if (!statement[0].IsWord("IF") || statement.size() < 5) return true;
  const QString condition = Rewritten(statement.subspan(1, 3), Values(variables, client_));
  statement = statement.subspan(4);
  const auto rows = client_.session.Execute(QStringLiteral("SELECT CASE WHEN %1 THEN 1 ELSE 0 END").arg(condition));
  return rows->Next() && rows->At(0).ToValue().ToBool();
}

/// DECLARE @a int, @b nvarchar(20) = N'x'
void StatementRunner::Declare(Tokens statement, Variables& variables) {
  for (std::size_t i = 1; i < statement.size(); ++i) {
    if (statement[i].kind != TokenKind::kParameter) continue;
    const QString name = ContentOf(statement[i]);
    Value value;
    for (++i; i < statement.size() && statement[i].kind != TokenKind::kParameter; ++i) {
      if (statement[i].IsSymbol("=") && i + 1 < statement.size()) value = LiteralValue(statement[i + 1]);
    }
    variables.Set(name, value);
    --i;
  }
}

/// SET @a = an expression
void StatementRunner::Assign(Tokens statement, Variables& variables) {
  if (statement.size() < 4 || !statement[2].IsSymbol("=")) ThrowSyntaxError(statement.back().text);
  const auto rows =
      client_.session.Execute(QStringLiteral("SELECT ") + Rewritten(statement.subspan(3), Values(variables, client_)));
  variables.Set(ContentOf(statement[1]), rows->Next() ? rows->At(0).ToValue() : Value());
}

StatementRunner::Outcome StatementRunner::RunSql(Tokens statement, const Variables& variables, bool more) {
  const StatementKind kind = KindOf(statement);
  if (kind == StatementKind::kRollback && !client_.session.InTransaction()) {
    throw ServerError(3903, QStringLiteral("The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION."));
  }
  Ending ending{.more = more};
  if (kind == StatementKind::kRollback) {
    UndoTransaction(client_.session);
    TellTransaction(client_, answer_, false);
    End(ending);
    return Outcome::kDone;
  }
  const std::unique_ptr<RowSource> rows = client_.session.Execute(Rewritten(statement, Values(variables, client_)));
  if (rows) {
    ending.count = WriteRows(*rows);
  } else if (ChangesRows(statement)) {
    const auto changes = client_.session.Execute(QStringLiteral("SELECT changes()"));
    if (changes->Next()) ending.count = static_cast<quint64>(changes->At(0).integer);
  }
  client_.lastCount = static_cast<int>(ending.count.value_or(0));
  TellTransaction(client_, answer_, kind == StatementKind::kCommit);
  End(ending);
  return Outcome::kDone;
}

/// EXEC @rc = name ...: the variable gets the return code.
StatementRunner::Outcome StatementRunner::RunExec(Tokens statement, Variables& variables, bool more) {
  QString code;
  if (statement.size() > 3 && statement[1].kind == TokenKind::kParameter && statement[2].IsSymbol("=")) {
    code = ContentOf(statement[1]);
    statement = statement.subspan(3);
  }
  const QString call = Rewritten(statement, Values(variables, client_));
  StatementRunner inside(client_, answer_, Answer::Statement::kOfProcedure);
  const std::optional<int> status = inside.Call(call);
  if (status) answer_.ReturnStatus(*status);
  if (status && !code.isEmpty()) variables.Set(code, Value(*status));
  answer_.End(place_ == Answer::Statement::kOfBatch ? Answer::Statement::kProcedure : place_,
              {.more = more, .failed = !status});
  return status ? Outcome::kDone : Outcome::kFailed;
}

std::optional<int> StatementRunner::Call(const QString& call) {
  try {
    const std::unique_ptr<RowSource> rows = client_.session.Execute(call);
    if (rows) {
      const quint64 count = WriteRows(*rows);
      End({.more = true, .count = count});
    }
    TellTransaction(client_, answer_, true);
    return 0;
  } catch (const DatabaseError& error) {
    (void)Report(error);
    return std::nullopt;
  }
}

quint64 StatementRunner::WriteRows(RowSource& rows) {
  const ResultStart start = StartResult(client_.session, rows);
  answer_.Columns(start.columns);
  qint64 count = 0;
  for (const HeldRow& row : start.rows) {
    client_.beforeRow(answer_, count++);
    answer_.ValueRow(start.columns, row);
  }
  std::vector<Cell> cells(start.columns.size());
  while (!start.isAll && rows.Next()) {
    client_.beforeRow(answer_, count++);
    for (std::size_t i = 0; i < cells.size(); ++i)
      cells[i] = rows.At(static_cast<int>(i));
    answer_.Row(start.columns, cells);
  }
  return static_cast<quint64>(count);
}

/// Writes an error.
/// \return whether later statements still run
StatementRunner::Outcome StatementRunner::Report(const DatabaseError& error) {
  if (error.ConnectionLost() || error.Number() == kCommandCancelled)
    throw RequestAbandoned{.undoes = client_.session.InTransaction()};
  WriteError(answer_, error);
  TellTransaction(client_, answer_, false);
  return EndsBatch(error) ? Outcome::kStop : Outcome::kFailed;
}

}  // namespace qbx::tds
