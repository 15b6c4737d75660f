// Runs the statements of a client on the engine, and writes their results.

#pragma once

#include <QString>
#include <functional>
#include <map>

#include "database/database_error.h"
#include "database/embedded/translator.h"
#include "database/session.h"
#include "tds_server/answer.h"
#include "tds_server/column_types.h"
#include "tds_server/parameters.h"

namespace qbx::tds {

/// Thrown to leave the rest of a request: the connection ends, or the client has cancelled.
struct RequestAbandoned {
  bool undoes = false;  ///< the engine has rolled back the open transaction
};

/// The values of the variables of a batch and of the parameters of a statement, by name with "@".
class Variables {
 public:
  void Set(const QString& name, const Value& value) { values_[name.toLower()] = value; }
  [[nodiscard]] const Value* Find(const QString& name) const;

 private:
  std::map<QString, Value> values_;
};

/// What the server knows of one client.
struct ClientState {
  Session& session;
  QString database;
  int number = 0;
  quint64 transaction = 0;  ///< its descriptor; 0: none is open
  quint64 transactions = 0;
  int lastCount = 0;  ///< rows of the last statement
  /// Called before each row.
  /// \throws RequestAbandoned
  std::function<void(Answer& answer, qint64 row)> beforeRow = {};
};

/// Runs statements of one client. Each statement is a separate call of the session, so that after a failed statement
/// the others run as on a server.
class StatementRunner {
 public:
  StatementRunner(ClientState& client, Answer& answer, Answer::Statement place)
      : client_(client), answer_(answer), place_(place) {}

  /// Runs a batch.
  /// \param more  whether more of the answer follows
  /// \return whether every statement succeeded
  bool Run(const QString& batch, Variables& variables, bool more);
  /// Runs one call and writes its results as those of a procedure.
  /// \return the procedure's return code; nothing when it failed
  std::optional<int> Call(const QString& call);

 private:
  enum class Outcome { kDone, kFailed, kStop };
  Outcome RunOne(Tokens statement, Variables& variables, bool more);
  Outcome RunSql(Tokens statement, const Variables& variables, bool more);
  Outcome RunExec(Tokens statement, Variables& variables, bool more);
  void Declare(Tokens statement, Variables& variables);
  void Assign(Tokens statement, Variables& variables);
  [[nodiscard]] bool Passes(Tokens& statement, const Variables& variables);
  quint64 WriteRows(RowSource& rows);
  Outcome Report(const DatabaseError& error);
  void End(const Ending& ending) { answer_.End(place_, ending); }

  ClientState& client_;
  Answer& answer_;
  Answer::Statement place_;
};

/// Rolls the whole open transaction back.
void UndoTransaction(Session& session);
/// Tells a client that a transaction was begun or ended, if it was not told before.
void TellTransaction(ClientState& client, Answer& answer, bool committed);

}  // namespace qbx::tds
