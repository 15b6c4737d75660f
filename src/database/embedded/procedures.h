// Stored procedures of the embedded databases: headers, prepared bodies and arguments.

#pragma once

#include <QHash>
#include <QString>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "database/embedded/prepared.h"
#include "database/session.h"
#include "database/value.h"

namespace qbx {

/// A parameter as the header declares it.
struct DeclaredParameter {
  QString name;      ///< with "@"
  QString typeName;  ///< "nvarchar", "smallint", ...
  ValueType type = ValueType::kText;
  int size = 0;   ///< characters of a text; 0: unlimited
  int scale = 0;  ///< of decimal and money
  std::optional<Value> defaultValue;
};

/// `CREATE PROCEDURE name @parameter type [= default], ... [AS]`.
struct ProcedureHeader {
  QString name;
  std::vector<DeclaredParameter> parameters;
};
/// \throws DatabaseError (102) when the header cannot be read
[[nodiscard]] ProcedureHeader ParseProcedureHeader(std::string_view header);

/// The value in the type of a parameter.
/// \throws DatabaseError (8114 wrong type, 220 number out of range, 8152 text too long)
[[nodiscard]] Value ConvertArgument(const DeclaredParameter& parameter, const Value& value);

/// A procedure that a session keeps.
class StoredProcedure {
 public:
  /// \throws DatabaseError (137) when the body uses a parameter that the header does not declare
  StoredProcedure(const std::shared_ptr<SqliteDatabase>& database, ProcedureHeader header, std::string_view body);

  [[nodiscard]] const ProcedureHeader& Header() const { return header_; }
  /// Whether one of its statements may write, so that it needs a transaction.
  [[nodiscard]] bool Writes() const { return writes_; }

  /// Runs the body with one value for each declared parameter.
  /// \return the rows of the last statement with columns, its first step done; nothing when there is none
  [[nodiscard]] std::unique_ptr<RowSource> Run(const std::vector<Value>& values);

 private:
  struct BodyStatement {
    std::string sql;
    // Null: it can only be prepared once the statements before it have run.
    std::shared_ptr<PreparedStatement> prepared;
    std::vector<int> bindings;  // number of the parameter for each position from 1
  };
  void Prepare(BodyStatement& statement);
  [[nodiscard]] StatementLease Bind(BodyStatement& statement, const std::vector<Value>& values);

  std::shared_ptr<SqliteDatabase> database_;
  ProcedureHeader header_;
  std::vector<BodyStatement> body_;
  bool writes_ = false;
};

/// The procedures of a session. Each is read from the table `_Procedures` when it is first needed.
class ProcedureCatalogue {
 public:
  explicit ProcedureCatalogue(std::shared_ptr<SqliteDatabase> database) : database_(std::move(database)) {}

  /// \param name  without regard to case; an owner before it ("dbo.") is ignored
  /// \throws DatabaseError (2812) when there is none
  [[nodiscard]] std::shared_ptr<StoredProcedure> Find(const QString& name);

 private:
  [[nodiscard]] std::shared_ptr<StoredProcedure> Load(const QString& name);

  std::shared_ptr<SqliteDatabase> database_;
  QHash<QString, std::shared_ptr<StoredProcedure>> known_;  // by the name that was asked for
};

}  // namespace qbx
