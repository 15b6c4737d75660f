// The routines that run every statement and stored-procedure call of the program.

#pragma once

#include <QString>
#include <chrono>
#include <optional>
#include <utility>
#include <vector>

#include "database/command.h"
#include "database/connection.h"
#include "database/error_interpretation.h"
#include "database/event_log.h"
#include "database/last_error.h"
#include "database/recordset.h"
#include "database/server_wait.h"
#include "diagnostics/diagnostics.h"

namespace qbx {

// The numbers that callers pass.
enum class CursorType { kForwardOnly = 0, kDynamic = 2 };
enum class LockType { kReadOnly = 1, kOptimistic = 3 };
enum class CursorLocation { kServer = 2, kClient = 3 };
enum class CommandType { kText = 1, kStoredProcedure = 4 };
inline constexpr int kOptionStoredProcedure = 4;
inline constexpr int kOptionUnspecified = -1;

/// Runs statements over the shared connection. No routine throws. Each catches every database error, passes it to the
/// interpretation, which logs and shows it, and returns its failure value. Outside a transaction a dropped connection
/// is re-opened silently, and a server that restarts is waited for. Inside a transaction, messages are shown when it
/// has ended. While the connection was never open, and once the user has agreed to end the program, statements fail
/// without a message.
class Statements {
 public:
  Statements(Connection& connection, ErrorInterpretation& interpretation, EventLog& events, LastError& lastError,
             Diagnostics diagnostics);

  /// Opens a recordset. A server-side forward-only recordset reads each row when it is asked for; any other is read at
  /// once. Until a forward-only recordset is at its end, write nothing over the same connection: the remaining rows
  /// could change or fail. The embedded engine needs neither lock type nor options.
  /// \param recordset   closed first when open
  /// \param connection  another connection than the shared one
  /// \return true when it FAILED
  [[nodiscard]] bool dbOpenRec(Recordset& recordset, const QString& sql, CursorType cursor = CursorType::kForwardOnly,
                               LockType lock = LockType::kReadOnly, int options = kOptionUnspecified,
                               CursorLocation location = CursorLocation::kClient, Connection* connection = nullptr);

  /// The same for many rows. They are read on the database thread while events run, so that no window freezes. On a
  /// failure the statement is run once more in the ordinary way, which opens a lost connection again and reports what
  /// is wrong.
  [[nodiscard]] bool dbOpenRecLong(Recordset& recordset, const QString& sql);

  struct ExecuteResult {
    Recordset records;    ///< forward-only; open only when records were asked for and there are any
    int errorNumber = 0;  ///< 0: success
    [[nodiscard]] bool Ok() const { return errorNumber == 0; }
  };
  /// Executes a batch.
  ExecuteResult dbExecute(const QString& sql, bool returnRecords = false, Connection* connection = nullptr);
  /// The same over the shared connection, in its own transaction. When the batch fails or the program is killed,
  /// nothing of it stays.
  ExecuteResult dbExecuteWhole(const QString& sql);

  /// Executes a command text.
  /// \param returnValue  true: return the first column of the first row (0 when there is none or it is no number);
  ///                     false: the recordset stays open
  /// \return the value, or 0; -1 on failure
  int dbRunCommand(const QString& commandText, bool returnValue, CommandType type, Recordset& recordset,
                   Connection* connection = nullptr);

  /// Runs a procedure with values for its parameters 1, 2, 3 ... in order.
  /// \return false when it failed (already reported)
  bool dbRunCommandWithParameters(const QString& procedure, const std::vector<Value>& values);

  /// Prepares the command to call a procedure: sets the shared connection and its time-out unless they are set, and
  /// fetches the parameters from the server. On failure it writes an event and shows a status box, and the command has
  /// no parameters.
  void PrepareCommand(Command& command, const QString& procedure);

  /// \return the next number of a key ("TEMP" counts down from -1), 0 on failure
  [[nodiscard]] int GetNextKeyID(const QString& key);

  /// \return the field, or "" for a NULL text field, or 0 for any other NULL field
  [[nodiscard]] static Value sysIsNull(const Recordset& recordset, const QString& field);

  static void CloseRecordset(Recordset& recordset) { recordset.Close(); }

  [[nodiscard]] Connection& Shared() { return connection_; }

  /// Begins a wait for the server.
  [[nodiscard]] WaitForServer BeginWaiting(MayCancel mayCancel) { return wait_.Begin(mayCancel); }
  /// See `ServerWait::Cancellations`.
  [[nodiscard]] int Cancellations() const { return wait_.Cancellations(); }

  /// Which failures of statements the user is told. The log has each failure.
  enum class Tells {
    /// A lost connection once until it is opened again, however many statements fail because of it. For commands that
    /// make several calls. A message of `dbExecute` about a second loss is shown in the same box.
    kLossOnce,
    /// Neither a lost connection nor a deadlock. For callers that do the work again, or tell that it failed.
    kNothingBridged,
  };
  /// While one exists, only these failures are told. A `kLossOnce` inside another one belongs to that one.
  class Telling {
   public:
    Telling(Statements& statements, Tells tells) : statements_(statements), outer_(statements.telling_), tells_(tells) {
      if (outer_ == nullptr || tells == Tells::kNothingBridged) statements_.telling_ = this;
    }
    ~Telling() { statements_.telling_ = outer_; }
    Telling(const Telling&) = delete;
    Telling& operator=(const Telling&) = delete;

   private:
    friend class Statements;

    Statements& statements_;
    Telling* outer_;
    Tells tells_;
    int toldOf_ = -1;  // the session whose loss the user was told: see Connection::SessionsOpened
  };

  /// For code that catches the failures of its calls itself: shows one as an unexpected error, unless the user is not
  /// to be told (`Telling`). The parameters are those of `ErrorReport::ShowError`.
  void ShowFailure(int location, const QString& routine, const DatabaseError& error);

 private:
  ExecuteResult Execute(Connection& target, const QString& sql, bool returnRecords, bool whole);
  void Report(Connection& connection, const char* routine, const QString& sql, const DatabaseError& error,
              const QString& before = {});
  void Tell(Connection& connection, const char* routine, const QString& sql, const DatabaseError& error,
            const QString& before);
  /// Whether the user is told of a failure. From then on its loss of the connection counts as told.
  [[nodiscard]] bool MayTell(const Connection& connection, const DatabaseError& error);
  void ShowConnectionProblem();
  std::optional<DatabaseError> Prepare(Command& command, const QString& procedure);
  void ShowUnreadableParameters(const QString& procedure, const DatabaseError& error);

  Connection& connection_;
  ErrorInterpretation& interpretation_;
  EventLog& events_;
  LastError& lastError_;
  Diagnostics diagnostics_;
  ServerWait wait_;
  Telling* telling_ = nullptr;
};

}  // namespace qbx
