// What a driver implements: one open session with a database.

#pragma once

#include <QString>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "database/value.h"

namespace qbx {

/// A column of a result.
struct Column {
  QString name;
  ValueType type = ValueType::kText;  ///< as declared; kText for an expression of unknown type
  int size = 0;                       ///< characters of a text column, 0: unlimited or unknown
  QString baseTable = {};             ///< where the engine tells; a network driver does not
  int precision =
      0;  ///< digits of a decimal, characters of a written-out date (10 date, 16 to the minute, 23 to the millisecond); 0: unknown
  int scale = 0;  ///< digits behind the point of a decimal
};

/// One cell as a driver hands it over, valid until the row source moves.
struct Cell {
  ValueType type = ValueType::kNull;
  qint64 integer =
      0;  ///< kBool, kInt; kDecimal: unscaled; kDateTime: milliseconds since 1970-01-01 00:00 as local wall-clock time
  double real = 0;        ///< kDouble
  std::string_view utf8;  ///< kText
  quint8 scale = 0;       ///< kDecimal

  [[nodiscard]] Value ToValue() const;
};

class PackedRows;

/// A forward-only result. Rows are produced as they are asked for; destroying it abandons the rest.
class RowSource {
 public:
  virtual ~RowSource() = default;
  [[nodiscard]] virtual const std::vector<Column>& Columns() const = 0;
  /// Steps to the next row (the first call: to the first).
  /// \return false at the end
  virtual bool Next() = 0;
  [[nodiscard]] virtual Cell At(int column) const = 0;
  /// All rows, where they were read already: whoever keeps them may move them out instead of stepping; else null.
  [[nodiscard]] virtual PackedRows* Packed() { return nullptr; }
};

enum class ParameterDirection { kInput, kOutput, kReturnValue };

/// A parameter of a procedure. A value that was never set is not sent: the procedure's default holds.
struct Parameter {
  QString name;  ///< with "@"
  ValueType type = ValueType::kText;
  int size = 0;  ///< characters of a text parameter, 0: unlimited
  ParameterDirection direction = ParameterDirection::kInput;
  bool isSet = false;
  Value value = {};  ///< an output's and the return value's: what the last call gave
};

/// One session. Every call may throw DatabaseError; a lost connection has number kUnspecifiedError. One call at a time, from any one thread;
/// only Interrupt may come from another.
class Session {
 public:
  virtual ~Session() = default;

  /// Runs a batch (statements separated by ";", or procedure calls written as statements) to its end, except for the rows of its last result.
  /// \return the last result with columns, or nothing when there is none
  virtual std::unique_ptr<RowSource> Execute(const QString& batch) = 0;

  /// Calls a procedure with the parameters that are set.
  /// \param parameters  as DescribeProcedure gave them; matched by name. Outputs and the return value are filled in.
  virtual std::unique_ptr<RowSource> Call(const QString& procedure, std::span<Parameter> parameters) = 0;

  /// The parameter list of a procedure as the server describes it; element 0 is the return value.
  [[nodiscard]] virtual std::vector<Parameter> DescribeProcedure(const QString& procedure) = 0;

  /// Transactions nest by counting; only the outermost commits. A rollback inside rolls all back.
  virtual void Begin() = 0;
  virtual void Commit() = 0;
  virtual void Rollback() = 0;  ///< never throws
  [[nodiscard]] virtual bool InTransaction() const = 0;

  /// Row-wise changes, as a client-side recordset makes them.
  virtual void DeleteRow(const QString& table, const QString& keyColumn, const Value& key) = 0;
  /// Many rows in one go.
  virtual void DeleteRows(const QString& table, const QString& keyColumn, std::span<const Value> keys) {
    for (const Value& key : keys)
      DeleteRow(table, keyColumn, key);
  }
  virtual void UpdateRow(const QString& table, const QString& keyColumn, const Value& key,
                         std::span<const QString> columns, std::span<const Value> values) = 0;
  virtual void InsertRow(const QString& table, std::span<const QString> columns, std::span<const Value> values) = 0;

  /// \param seconds  time limit of each later call; 0: none
  virtual void SetCommandTimeout(int seconds) = 0;
  [[nodiscard]] virtual bool IsAlive() = 0;
  /// Makes the running call fail soon ("Operation cancelled by user"). The only call allowed from another thread.
  virtual void Interrupt() = 0;
  /// Takes back an interruption that came too late, so that it does not hit what is done next.
  virtual void ForgetInterruption() {}
};

}  // namespace qbx
