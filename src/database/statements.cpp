#include "database/statements.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

#include "database/server_errors.h"

namespace qbx {

namespace {

constexpr int kReopensOfRead = 3;
constexpr int kReopensOfExecute = 1;
constexpr int kReopenPause = 250;
constexpr int kUnreadableParametersPause = 1500;
constexpr auto kNoTime = std::chrono::milliseconds(0);
constexpr int kFailed = -1;

/// First column of the first row, when it is a number or a text with a number; 0 for anything else and for a number
/// beyond 32 bits.
int FirstNumber(const Recordset& recordset) {
  if (recordset.Eof() || recordset.Columns().empty()) return 0;
  const Value value = recordset.Field(0);
  bool numeric = !value.IsNull() && value.Type() != ValueType::kDateTime;
  if (value.Type() == ValueType::kText) value.ToText().toDouble(&numeric);
  if (!numeric) return 0;
  const qint64 number = value.ToInt();
  const bool fits = number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max();
  return fits ? static_cast<int>(number) : 0;
}

QString ConnectionProblem() {
  return QStringLiteral(
      "A problem has occured with the database connection. You should quit the program and restart the computer.");
}

/// Whether the connection dropped now, or dropped before and could not be opened again.
bool IsLost(const Connection& connection, const DatabaseError& error) {
  return error.ConnectionLost() || !connection.IsOpen();
}

}  // namespace

Statements::Statements(Connection& connection, ErrorInterpretation& interpretation, EventLog& events,
                       LastError& lastError, Diagnostics diagnostics)
    : connection_(connection),
      interpretation_(interpretation),
      events_(events),
      lastError_(lastError),
      diagnostics_(diagnostics),
      wait_(diagnostics) {
  connection.OnWaiting([this](MayCancel mayCancel) { return wait_.Begin(mayCancel); });
}

void Statements::Report(Connection& connection, const char* routine, const QString& sql, const DatabaseError& error,
                        const QString& before) {
  connection.AfterTransaction(
      [this, &connection, routine, sql, error, before] { Tell(connection, routine, sql, error, before); });
}

void Statements::Tell(Connection& connection, const char* routine, const QString& sql, const DatabaseError& error,
                      const QString& before) {
  // Without a database, the message belongs to what the user asked for, not to each statement.
  if (!connection.WasOpen()) return;
  if (!MayTell(connection, error)) return;
  connection.KeepErrors(error);
  wait_.TellOfFailure(
      [&] { interpretation_.ReportDatabaseError(&connection, QLatin1String(routine), sql, error, before); });
  if (diagnostics_.ui.QuitRequested()) connection_.StopWork();
}

bool Statements::MayTell(const Connection& connection, const DatabaseError& error) {
  if (telling_ == nullptr) return true;
  const bool lost = IsLost(connection, error);
  const bool tells =
      telling_->tells_ == Tells::kLossOnce
          ? !lost || std::exchange(telling_->toldOf_, connection.SessionsOpened()) != connection.SessionsOpened()
          : !lost && !IsDeadlock(error);
  if (!tells) diagnostics_.log.WriteLog(kDatabaseErrorPrefix + error.Description());
  return tells;
}

void Statements::ShowFailure(int location, const QString& routine, const DatabaseError& error) {
  if (!MayTell(connection_, error)) return;
  wait_.TellOfFailure([&] { diagnostics_.errors.ShowError(location, routine, error.Description()); });
}

bool Statements::dbOpenRec(Recordset& recordset, const QString& sql, CursorType cursor, LockType, int,
                           CursorLocation location, Connection* connection) {
  Connection& target = connection != nullptr ? *connection : connection_;
  recordset.Close();
  const bool stepwise = cursor == CursorType::kForwardOnly && location == CursorLocation::kServer;
  const bool mayReopen = target.WasOpen() && !target.InTransaction();
  WaitForServer wait = wait_.Begin(mayReopen ? MayCancel::kYes : MayCancel::kNo);
  for (int reopens = 0;; ++reopens) {
    try {
      if (reopens > 0) target.Reopen();
      std::unique_ptr<RowSource> rows = target.Driver().Execute(sql);
      if (rows == nullptr) return false;
      recordset = stepwise ? Recordset::Forward(std::move(rows)) : Recordset::ReadAll(std::move(rows));
      recordset.SetSource([&target, sql] { return target.Driver().Execute(sql); });
      return false;
    } catch (const DatabaseError& error) {
      if (mayReopen && IsLost(target, error) && reopens < kReopensOfRead && wait(kNoTime)) {
        diagnostics_.log.WriteLog(QStringLiteral("No DB Connection - reconnecting"));
        diagnostics_.ui.Wait(kReopenPause);
        continue;
      }
      wait = {};
      Report(target, "dbOpenRec", sql, error);
      return true;
    }
  }
}

bool Statements::dbOpenRecLong(Recordset& recordset, const QString& sql) {
  if (connection_.IsOpen()) {
    try {
      Recordset rows;
      const WaitForServer wait = wait_.Begin(MayCancel::kNo);
      connection_.RunLong([&] { rows = Recordset::ReadAll(connection_.Driver().Execute(sql)); },
                          [&wait] { (void)wait(kNoTime); }, {});
      rows.SetSource([this, sql] { return connection_.Driver().Execute(sql); });
      recordset = std::move(rows);
      return false;
    } catch (const DatabaseError& error) {
      diagnostics_.log.WriteLog(QLatin1String("dbOpenRec: ") + error.Description());
    } catch (const std::exception& error) {
      diagnostics_.errors.ShowError(0, QStringLiteral("dbOpenRec"), QString::fromUtf8(error.what()));
      return true;
    }
  }
  return dbOpenRec(recordset, sql);
}

Statements::ExecuteResult Statements::dbExecute(const QString& sql, bool returnRecords, Connection* connection) {
  return Execute(connection != nullptr ? *connection : connection_, sql, returnRecords, false);
}

Statements::ExecuteResult Statements::dbExecuteWhole(const QString& sql) {
  return Execute(connection_, sql, false, true);
}

Statements::ExecuteResult Statements::Execute(Connection& target, const QString& sql, bool returnRecords, bool whole) {
  const bool mayReopen = target.WasOpen() && !target.InTransaction();
  WaitForServer wait = wait_.Begin(MayCancel::kNo);
  for (int reopens = 0;; ++reopens) {
    try {
      if (reopens > 0) target.Reopen();
      ExecuteResult result;
      // Rolled back before the failure is reported, because the report writes to the database, too.
      std::optional<Transaction> transaction;
      if (whole) transaction.emplace(target, Transaction::IfLost::kFail);
      std::unique_ptr<RowSource> rows = target.Driver().Execute(sql);
      if (transaction) transaction->Commit();
      if (returnRecords && rows != nullptr) result.records = Recordset::Forward(std::move(rows));
      return result;
    } catch (const DatabaseError& error) {
      lastError_.LastEmailErrorNo = error.Number();
      lastError_.LastEmailError = error.Description();
      diagnostics_.log.WriteLog(QLatin1String("dbExecute Error - ") + sql);
      QString before;
      if (mayReopen && IsLost(target, error)) {
        if (reopens < kReopensOfExecute) continue;
        wait = {};
        if (telling_ == nullptr) {
          ShowConnectionProblem();
        } else {
          before = ConnectionProblem();
        }
      }
      wait = {};
      Report(target, "dbExecute", sql, error, before);
      return {.records = {}, .errorNumber = error.Number() != 0 ? error.Number() : kUnspecifiedError};
    }
  }
}

void Statements::ShowConnectionProblem() {
  wait_.TellOfFailure([this] {
    diagnostics_.ui.ShowMessage(
        {.text = ConnectionProblem(), .icon = MessageIcon::kExclamation, .defaultAnswer = MessageAnswer::kOk});
  });
}

int Statements::dbRunCommand(const QString& commandText, bool returnValue, CommandType, Recordset& recordset,
                             Connection* connection) {
  Connection& target = connection != nullptr ? *connection : connection_;
  recordset.Close();
  try {
    std::unique_ptr<RowSource> rows = target.Driver().Execute(commandText);
    if (rows != nullptr) recordset = Recordset::ReadAll(std::move(rows));
    if (!returnValue) return 0;
    const int value = FirstNumber(recordset);
    recordset.Close();
    return value;
  } catch (const DatabaseError& error) {
    Report(target, "dbRunCommand", commandText, error);
    recordset.Close();
    return kFailed;
  }
}

bool Statements::dbRunCommandWithParameters(const QString& procedure, const std::vector<Value>& values) {
  Command command;
  const std::optional<DatabaseError> unprepared = Prepare(command, procedure);
  try {
    if (unprepared) throw *unprepared;
    int position = 0;
    for (const Value& value : values)
      command.SetParameter(++position, value);
    command.Execute();
    return true;
  } catch (const DatabaseError& error) {
    Report(*command.connection, "dbRunCommandWithParameters", procedure, error);
    return false;
  }
}

void Statements::PrepareCommand(Command& command, const QString& procedure) {
  (void)Prepare(command, procedure);
}

std::optional<DatabaseError> Statements::Prepare(Command& command, const QString& procedure) {
  if (command.connection == nullptr) command.connection = &connection_;
  if (command.commandTimeout == 0) command.commandTimeout = connection_.CommandTimeout();
  command.commandText = procedure;
  command.parameters.clear();
  try {
    command.parameters = command.connection->Driver().DescribeProcedure(procedure);
    return std::nullopt;
  } catch (const DatabaseError& error) {
    if (command.connection->WasOpen())
      command.connection->AfterTransaction([this, procedure, error] { ShowUnreadableParameters(procedure, error); });
    return error;
  }
}

void Statements::ShowUnreadableParameters(const QString& procedure, const DatabaseError& error) {
  events_.LogEvent(kEventError, 0, QStringLiteral("DERIVE_PARAMS"), error.Description());
  diagnostics_.status.ShowStatus(QLatin1String("Unable to load parameters for procedure: ") + procedure);
  diagnostics_.ui.Pause(kUnreadableParametersPause);
  diagnostics_.status.Close();
}

int Statements::GetNextKeyID(const QString& key) {
  Recordset recordset;
  const QString sql = QLatin1String("proc_sel_Next") + key + QLatin1String("ID");
  if (dbOpenRec(recordset, sql, CursorType::kDynamic, LockType::kOptimistic, 0, CursorLocation::kClient)) return 0;
  return FirstNumber(recordset);
}

Value Statements::sysIsNull(const Recordset& recordset, const QString& field) {
  Value value = recordset.Field(field);
  if (!value.IsNull()) return value;
  const int index = recordset.ColumnIndex(field);
  const bool isText = index >= 0 && recordset.Columns()[static_cast<std::size_t>(index)].type == ValueType::kText;
  return isText ? Value(QString(QLatin1String(""))) : Value(0);
}

}  // namespace qbx
