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
  int size = 0;                       ///< characters of a text column; 0: unlimited or unknown
  QString baseTable = {};             ///< set by the embedded engine only; a network driver does not tell it
  /// Digits of a decimal; characters of a date as text (10 date, 16 to the minute, 23 to the millisecond); 0: unknown.
  int precision = 0;
  int scale = 0;  ///< digits of a decimal behind the point
};

/// One cell as a driver hands it over. Valid until the row source moves.
struct Cell {
  ValueType type = ValueType::kNull;
  /// KBool, kInt; kDecimal: unscaled; kDateTime: milliseconds since 1970-01-01 00:00 in local wall-clock time.
  qint64 integer = 0;
  double real = 0;        ///< kDouble
  std::string_view utf8;  ///< kText
  quint8 scale = 0;       ///< kDecimal

  [[nodiscard]] Value ToValue() const;
};

class PackedRows;

/// A forward-only result. Each row is read when it is asked for. Destroying it abandons the remaining rows.
class RowSource {
 public:
  virtual ~RowSource() = default;
  [[nodiscard]] virtual const std::vector<Column>& Columns() const = 0;
  /// Moves to the next row; the first call moves to the first.
  /// \return false at the end
  virtual bool Next() = 0;
  [[nodiscard]] virtual Cell At(int column) const = 0;
  /// All rows when they can be had at once, else null. The caller may move them out instead of stepping. May read them,
  /// and throw as Next.
  [[nodiscard]] virtual PackedRows* Packed() { return nullptr; }
};

enum class ParameterDirection { kInput, kOutput, kReturnValue };

/// A parameter of a procedure. A parameter without a value is not sent, so the procedure's default holds.
struct Parameter {
  QString name;  ///< with "@"
  ValueType type = ValueType::kText;
  int size = 0;  ///< characters of a text parameter; 0: unlimited
  ParameterDirection direction = ParameterDirection::kInput;
  bool isSet = false;
  Value value = {};  ///< of an output and of the return value: the result of the last call
};

/// One session. Every call may throw DatabaseError; kUnspecifiedError means that the connection is lost. Any one thread
/// makes one call at a time. Only Interrupt may come from another thread.
class Session {
 public:
  virtual ~Session() = default;

  /// Runs a batch (statements separated by ";", or procedure calls written as statements) to its end, except for the
  /// rows of its last result.
  /// \return the last result with columns; nothing when there is none
  virtual std::unique_ptr<RowSource> Execute(const QString& batch) = 0;

  /// Calls a procedure with the parameters that are set.
  /// \param parameters  as DescribeProcedure gave them; matched by name. Outputs and the return value are filled in.
  virtual std::unique_ptr<RowSource> Call(const QString& procedure, std::span<Parameter> parameters) = 0;

  /// The parameter list of a procedure as the server describes it; element 0 is the return value.
  [[nodiscard]] virtual std::vector<Parameter> DescribeProcedure(const QString& procedure) = 0;

  /// Transactions nest by counting. Only the outermost commits; a rollback inside rolls back all.
  virtual void Begin() = 0;
  virtual void Commit() = 0;
  virtual void Rollback() = 0;  ///< never throws
  [[nodiscard]] virtual bool InTransaction() const = 0;

  /// Changes of single rows, as a client-side recordset makes them.
  virtual void DeleteRow(const QString& table, const QString& keyColumn, const Value& key) = 0;
  /// Deletes many rows at once.
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
  /// Takes back an interruption that came too late, so that it does not stop the next call.
  virtual void ForgetInterruption() {}
};

}  // namespace qbx
