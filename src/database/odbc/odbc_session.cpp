#include "database/odbc/odbc_session.h"

#include <algorithm>
#include <array>
#include <utility>

#include "database/odbc/open_rows.h"
#include "database/odbc/procedure_call.h"
#include "database/server_errors.h"
#include "database/sql_literal.h"

namespace qbx {
namespace {

using MayInterrupt = OdbcLink::MayInterrupt;

constexpr std::size_t kKeysOfStatement = 500;
constexpr int kExchanges = 1;
constexpr int kExchangesOfPrepared = 2;         // to run the statement, and to free it at the server
constexpr int kNoTransactionToRollBack = 3903;  // the server's number
constexpr int kProbeSeconds = 5;
// The server's numbers for a call that does not fit the procedure, because the procedure has changed since it was
// described.
constexpr std::array kWrongCall = {201, 2812, 8144, 8145, 8146};

DatabaseError Refusal(int serverNumber, const QString& text) {
  return DatabaseError(PendingNumber(serverNumber), text,
                       {{serverNumber, QStringLiteral("42000"), QLatin1String("[SQL Server]") + text}});
}

/// The time limit for what a server that is there answers at once.
class ShortLimit {
 public:
  explicit ShortLimit(OdbcLink& link) : link_(link), before_(link.TimeLimit()) {
    link_.SetTimeLimit(before_ > 0 ? std::min(before_, kProbeSeconds) : kProbeSeconds);
  }
  ~ShortLimit() { link_.SetTimeLimit(before_); }
  ShortLimit(const ShortLimit&) = delete;
  ShortLimit& operator=(const ShortLimit&) = delete;

 private:
  OdbcLink& link_;
  int before_;
};

QString WhereKey(const QString& keyColumn) {
  return QLatin1String(" WHERE ") + BracketedName(keyColumn);
}

}  // namespace

OdbcSession::~OdbcSession() {
  depth_ = std::min(depth_, 1);
  Rollback();
}

std::unique_ptr<RowSource> OdbcSession::Execute(const QString& batch) {
  const BatchText text = ServerBatch(batch);
  if (text.text.isEmpty()) return nullptr;
  if (text.kind == BatchKind::kRead) return OpenRead(text.text);
  OdbcParameters none;
  return std::move(Send(text.text, none, text.kind).outcome.last);
}

OdbcSession::Sent OdbcSession::Send(const QString& sql, MayInterrupt mayInterrupt) {
  OdbcParameters none;
  return Send(sql, none, BatchKind::kOne, mayInterrupt);
}

OdbcSession::Sent OdbcSession::Send(const QString& sql, OdbcParameters& parameters, BatchKind kind,
                                    MayInterrupt mayInterrupt) {
  FreeConnection();
  if (mayInterrupt == MayInterrupt::kYes) CheckTransaction();
  const bool prepared = kind == BatchKind::kStatements;
  OdbcStatement statement(link_->Handle(), link_->TimeLimit(), link_->DataAnywhere());
  const OdbcLink::Turn turn(*link_, statement.Handle(), prepared ? kExchangesOfPrepared : kExchanges, mayInterrupt);
  Sent sent;
  try {
    const SQLRETURN ran = statement.Run(sql, parameters, prepared);
    if (SQL_SUCCEEDED(ran)) sent.changedRows = statement.ChangedRows();
    sent.outcome = statement.ReadAll(ran, QLatin1String(NamedCall::kOutcomeColumn));
  } catch (const OdbcFailure& failure) {
    sent.outcome.errors = failure.records;
  }
  if (!sent.outcome.errors.empty()) link_->Fail(sent.outcome.errors);
  return sent;
}

std::unique_ptr<RowSource> OdbcSession::OpenRead(const QString& select) {
  FreeConnection();
  CheckTransaction();
  auto statement = std::make_unique<OdbcStatement>(link_->Handle(), link_->TimeLimit(), link_->DataAnywhere());
  const auto started = std::chrono::steady_clock::now();
  const OdbcLink::Turn turn(*link_, statement->Handle(), kExchanges);
  try {
    OdbcParameters none;
    const SQLRETURN ran = statement->Run(select, none, false);
    if (SQL_SUCCEEDED(ran) && statement->HasColumns())
      return std::make_unique<OpenRows>(link_, std::move(statement), link_->TimeLeftSince(started));
    OdbcOutcome outcome = statement->ReadAll(ran, {});
    if (outcome.errors.empty()) return std::move(outcome.last);
    link_->Fail(outcome.errors);
  } catch (const OdbcFailure& failure) {
    link_->Fail(failure.records);
  }
}

/// A connection can run only one statement at a time.
void OdbcSession::FreeConnection() {
  if (link_->IsDead()) throw LostConnectionError();
  if (link_->openRows != nullptr) link_->openRows->KeepRest();
}

/// Refuses to go on after the server rolled back the transaction: later statements would be stored without the earlier
/// ones.
void OdbcSession::CheckTransaction() {
  if (depth_ > 0 && !doomed_) {
    if (std::optional<DatabaseError> failure = link_->TakeFailure()) {
      const Sent sent = Send(QStringLiteral("SELECT @@TRANCOUNT AS Depth"), MayInterrupt::kNo);
      doomed_ = !sent.outcome.last || !sent.outcome.last->Next() || sent.outcome.last->At(0).ToValue().ToInt() == 0;
      if (doomed_) doomedBy_ = std::move(failure);
    }
  }
  if (doomed_) throw doomedBy_ ? *doomedBy_ : Refusal(kTransactionDoomed, TransactionDoomedText());
}

std::unique_ptr<RowSource> OdbcSession::Call(const QString& procedure, std::span<Parameter> parameters) {
  NamedCall call(procedure, parameters);
  try {
    Sent sent = Send(call.Text(), call.Values());
    if (sent.outcome.apart) NamedCall::Take(*sent.outcome.apart, parameters);
    return std::move(sent.outcome.last);
  } catch (const DatabaseError& error) {
    ForgetWrongDescription(procedure, error);
    throw;
  }
}

void OdbcSession::ForgetWrongDescription(const QString& procedure, const DatabaseError& error) {
  const bool wrong = std::ranges::any_of(error.Errors(), [](const ProviderError& each) {
    return std::ranges::find(kWrongCall, each.number) != kWrongCall.end();
  });
  if (wrong) described_.remove(procedure.toLower());
}

std::vector<Parameter> OdbcSession::DescribeProcedure(const QString& procedure) {
  const QString key = procedure.toLower();
  if (const auto known = described_.constFind(key); known != described_.constEnd()) return *known;
  FreeConnection();
  CheckTransaction();
  const OdbcStatement statement(link_->Handle(), link_->TimeLimit(), link_->DataAnywhere());
  const OdbcLink::Turn turn(*link_, statement.Handle(), kExchanges);
  std::vector<Parameter> list;
  try {
    list = ReadParameterList(statement.Handle(), procedure, link_->DataAnywhere());
  } catch (const OdbcFailure& failure) {
    link_->Fail(failure.records);
  }
  if (list.empty()) throw ProcedureMissing(procedure);
  described_.insert(key, list);
  return list;
}

void OdbcSession::Begin() {
  if (depth_ == 0) {
    FreeConnection();
    const ShortLimit limit(*link_);  // a server that is there begins at once
    SendBoundary(QStringLiteral("BEGIN TRANSACTION"));
    (void)link_->TakeFailure();
    doomedBy_.reset();
  }
  ++depth_;
}

void OdbcSession::Commit() {
  if (depth_ == 0)
    throw Refusal(3902, QStringLiteral("The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION."));
  CheckTransaction();
  if (depth_ == 1) SendBoundary(QStringLiteral("COMMIT TRANSACTION"));
  --depth_;
}

void OdbcSession::Rollback() {
  if (depth_ == 0) return;
  try {
    if (!doomed_) SendBoundary(QStringLiteral("ROLLBACK TRANSACTION"));
  } catch (const DatabaseError& error) {
    const bool undoneBefore = std::ranges::any_of(
        error.Errors(), [](const ProviderError& each) { return each.number == kNoTransactionToRollBack; });
    if (!undoneBefore) link_->GiveUp();
  }
  --depth_;
  doomed_ = depth_ > 0;
}

/// Begins or ends a transaction. Without an answer in time, nobody knows whether a transaction is open. All later
/// statements would belong to it, so the connection is given up.
void OdbcSession::SendBoundary(const QString& sql) {
  try {
    Send(sql, MayInterrupt::kNo);
  } catch (const DatabaseError& error) {
    if (error.Number() == kCommandTimedOut || error.Number() == kCommandCancelled) link_->GiveUp();
    throw;
  }
}

void OdbcSession::DeleteRow(const QString& table, const QString& keyColumn, const Value& key) {
  OdbcParameters values;
  values.Add(key);
  Send(QLatin1String("DELETE FROM ") + BracketedName(table) + WhereKey(keyColumn) + QLatin1String(" = ?"), values);
}

void OdbcSession::DeleteRows(const QString& table, const QString& keyColumn, std::span<const Value> keys) {
  if (keys.empty()) return;
  const bool whole = std::ranges::all_of(keys, [](const Value& key) { return key.Type() == ValueType::kInt; });
  if (!whole) return Session::DeleteRows(table, keyColumn, keys);
  const QString start =
      QLatin1String("DELETE FROM ") + BracketedName(table) + WhereKey(keyColumn) + QLatin1String(" IN (");
  QString batch;
  for (std::size_t at = 0; at < keys.size(); ++at) {
    const bool first = at % kKeysOfStatement == 0;
    if (first) batch += (at > 0 ? QLatin1String(");\n") : QLatin1String()) + start;
    batch += (first ? QLatin1String() : QLatin1String(",")) + SqlLiteral(keys[at]);
  }
  Send(batch + u')');
}

void OdbcSession::UpdateRow(const QString& table, const QString& keyColumn, const Value& key,
                            std::span<const QString> columns, std::span<const Value> values) {
  QStringList changes;
  OdbcParameters given;
  for (std::size_t at = 0; at < columns.size(); ++at) {
    changes += BracketedName(columns[at]) + QLatin1String(" = ?");
    given.Add(values[at]);
  }
  given.Add(key);
  const Sent sent = Send(QLatin1String("UPDATE ") + BracketedName(table) + QLatin1String(" SET ") +
                             changes.join(QLatin1String(", ")) + WhereKey(keyColumn) + QLatin1String(" = ?"),
                         given);
  if (sent.changedRows == 0)
    throw Refusal(0,
                  QStringLiteral(
                      "Row cannot be located for updating. Some values may have been changed since it was last read."));
}

void OdbcSession::InsertRow(const QString& table, std::span<const QString> columns, std::span<const Value> values) {
  QStringList names;
  QStringList places;
  OdbcParameters given;
  for (std::size_t at = 0; at < columns.size(); ++at) {
    names += BracketedName(columns[at]);
    places += QStringLiteral("?");
    given.Add(values[at]);
  }
  const QString row = names.isEmpty() ? QStringLiteral(" DEFAULT VALUES")
                                      : QLatin1String(" (") + names.join(QLatin1String(", ")) +
                                            QLatin1String(") VALUES (") + places.join(QLatin1String(", ")) + u')';
  Send(QLatin1String("INSERT INTO ") + BracketedName(table) + row, given);
}

bool OdbcSession::IsAlive() {
  if (link_->IsDead()) return false;
  if (link_->openRows != nullptr) return true;
  const ShortLimit limit(*link_);
  try {
    Send(QStringLiteral("SELECT 1 AS Alive"), MayInterrupt::kNo);
  } catch (const DatabaseError&) {
    return false;
  }
  return true;
}

}  // namespace qbx
