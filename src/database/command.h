// A stored-procedure call with its parameters.

#pragma once

#include <QString>
#include <vector>

#include "database/connection.h"
#include "database/recordset.h"
#include "database/session.h"

namespace qbx {

/// Prepared by `Statements::PrepareCommand`, which fetches the parameter list from the server; then parameters are set
/// by name or position and the command is executed. Only what was set is sent.
class Command {
 public:
  Command() = default;

  QString commandText;     ///< the procedure's name
  int commandTimeout = 0;  ///< seconds; 0: that of the connection
  Connection* connection = nullptr;
  std::vector<Parameter> parameters;  ///< element 0 is the return value

  /// Sets a parameter by name, without regard to case.
  /// \throws DatabaseError kItemNotFound when the procedure has none of that name, kWrongType when the value does not
  /// fit (text that is no number or date for such a parameter, text longer than the parameter); both without provider
  /// errors
  void SetParameter(const QString& name, const Value& value);
  /// Sets a parameter by position; 1 is the first after the return value. Fails as above.
  void SetParameter(int position, const Value& value);

  /// Calls the procedure with what was set.
  /// \return its rows, nothing when it returns none
  /// \throws DatabaseError; its provider errors are kept on the connection
  [[nodiscard]] std::unique_ptr<RowSource> Open();
  /// Executes and discards any rows.
  void Execute();

 private:
  void Assign(Parameter& parameter, const Value& value);
};

}  // namespace qbx
