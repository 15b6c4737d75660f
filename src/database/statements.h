// The routines that carry every statement and stored-procedure call of the program.

#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "database/command.h"
#include "database/connection.h"
#include "database/error_interpretation.h"
#include "database/event_log.h"
#include "database/last_error.h"
#include "database/recordset.h"
#include "diagnostics/diagnostics.h"

namespace qbx {

// The platform's numbering, as callers pass it.
enum class CursorType { kForwardOnly = 0, kDynamic = 2 };
enum class LockType { kReadOnly = 1, kOptimistic = 3 };
enum class CursorLocation { kServer = 2, kClient = 3 };
enum class CommandType { kText = 1, kStoredProcedure = 4 };
inline constexpr int kOptionStoredProcedure = 4;
inline constexpr int kOptionUnspecified = -1;

/// Statements over the shared connection. No routine throws: each catches every database error, hands it to the
/// interpretation, which logs and shows it, and returns its failure value. A dropped connection is re-opened silently
/// outside a transaction; a failure inside one rolls it back before it is shown. While the connection was never open, and once the user has agreed to end the program, they fail without showing anything.
class Statements {
 public:
  Statements(Connection& connection, ErrorInterpretation& interpretation, EventLog& events, LastError& lastError,
             Diagnostics diagnostics);

  /// Opens a recordset. A server-side forward-only one steps rows as they are asked for, any other is read whole. While
  /// one is stepped, nothing may be written over the same connection: the rows still to come could change or fail.
  /// Lock type and options are the platform's; the embedded engine needs neither.
  /// \param recordset   closed first when open
  /// \param connection  another connection than the shared one
  /// \return true when it FAILED
  [[nodiscard]] bool dbOpenRec(Recordset& recordset, const QString& sql, CursorType cursor = CursorType::kForwardOnly,
                               LockType lock = LockType::kReadOnly, int options = kOptionUnspecified,
                               CursorLocation location = CursorLocation::kClient, Connection* connection = nullptr);

  /// The same for many rows, read whole on the database thread while events run, so that no window freezes. What fails there is tried once more as an
  /// ordinary statement, which opens a lost connection again and says what is wrong.
  [[nodiscard]] bool dbOpenRecLong(Recordset& recordset, const QString& sql);

  struct ExecuteResult {
    Recordset records;    ///< forward-only, open only when records were asked for and came
    int errorNumber = 0;  ///< 0: success
    [[nodiscard]] bool Ok() const { return errorNumber == 0; }
  };
  /// Executes a batch.
  ExecuteResult dbExecute(const QString& sql, bool returnRecords = false, Connection* connection = nullptr);
  /// The same over the shared connection, in a transaction of its own: of a batch that fails or is killed half way nothing stays.
  ExecuteResult dbExecuteWhole(const QString& sql);

  /// Executes a command text.
  /// \param returnValue  asks for the first column of the first row (0 when there is none or it is no number);
  ///                     otherwise the recordset stays open
  /// \return the value, or 0; -1 on failure
  int dbRunCommand(const QString& commandText, bool returnValue, CommandType type, Recordset& recordset,
                   Connection* connection = nullptr);

  /// Runs a procedure with values for its parameters 1, 2, 3 ... in order.
  /// \return false when it failed (already reported)
  bool dbRunCommandWithParameters(const QString& procedure, const std::vector<Value>& values);

  /// Makes the command ready to call a procedure: shared connection and its time-out unless set, parameters fetched
  /// from the server. On failure an event and a status box, and the command has no parameters.
  void PrepareCommand(Command& command, const QString& procedure);

  /// \return the next number of a key ("TEMP" counts down from -1), 0 on failure
  [[nodiscard]] int GetNextKeyID(const QString& key);

  /// \return the field, or "" for a NULL text field, or 0 for any other NULL field
  [[nodiscard]] static Value sysIsNull(const Recordset& recordset, const QString& field);

  static void CloseRecordset(Recordset& recordset) { recordset.Close(); }

  [[nodiscard]] Connection& Shared() { return connection_; }

  /// While one lives, a lost connection is told to the user once, however many statements fail for it; the log has each
  /// of them. What `dbExecute` says of a second loss stands in the same box. For a command that reads several things in a row.
  class TellLossOnce {
   public:
    explicit TellLossOnce(Statements& statements) : statements_(statements), outer_(statements.lossTold_) {
      if (outer_ == nullptr) statements_.lossTold_ = &told_;
    }
    ~TellLossOnce() { statements_.lossTold_ = outer_; }
    TellLossOnce(const TellLossOnce&) = delete;
    TellLossOnce& operator=(const TellLossOnce&) = delete;

   private:
    Statements& statements_;
    bool* outer_;
    bool told_ = false;
  };

 private:
  ExecuteResult Execute(Connection& target, const QString& sql, bool returnRecords, bool whole);
  void Report(Connection& connection, const char* routine, const QString& sql, const DatabaseError& error,
              const QString& before = {});
  void ShowConnectionProblem();
  std::optional<DatabaseError> Prepare(Command& command, const QString& procedure);
  void ShowUnreadableParameters(const QString& procedure, const DatabaseError& error);

  Connection& connection_;
  ErrorInterpretation& interpretation_;
  EventLog& events_;
  LastError& lastError_;
  Diagnostics diagnostics_;
  bool* lossTold_ = nullptr;  // of the outermost TellLossOnce
};

}  // namespace qbx
