// A stored-procedure call with its parameters.

#pragma once

#include <QString>
#include <vector>

#include "database/connection.h"
#include "database/recordset.h"
#include "database/session.h"

namespace qbx {

/// Prepared by `Statements::PrepareCommand`, which fetches the parameter list from the server; then parameters are set by name or position and
/// the command is executed. Only what was set is sent.
class Command {
 public:
  Command() = default;

  QString commandText;  ///< the procedure's name
  int commandTimeout = 0;
  Connection* connection = nullptr;
  std::vector<Parameter> parameters;  ///< element 0 is the return value

  /// Sets a parameter by name, without regard to case.
  /// \throws DatabaseError (3265, item cannot be found) when the procedure has none of that name, (8114 / 8152) when the type does not fit
  void SetParameter(const QString& name, const Value& value);
  /// Sets a parameter by position; 1 is the first after the return value.
  void SetParameter(int position, const Value& value);

  /// \throws DatabaseError; its provider errors are kept on the connection
  [[nodiscard]] std::unique_ptr<RowSource> Open();
  /// Executes and discards any rows.
  void Execute();
};

}  // namespace qbx
