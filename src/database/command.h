// A stored-procedure call with its parameters.

#pragma once

#include <QString>
#include <vector>

#include "database/connection.h"
#include "database/recordset.h"
#include "database/session.h"

namespace qbx {

/// `Statements::PrepareCommand` prepares it and fetches the parameter list from the server. Then set parameters by name
/// or position and execute the command. A parameter that was not set is not sent.
class Command {
 public:
  Command() = default;

  QString commandText;     ///< the procedure's name
  int commandTimeout = 0;  ///< seconds; 0: the connection's time-out
  Connection* connection = nullptr;
  std::vector<Parameter> parameters;  ///< element 0 is the return value

  /// Sets a parameter by name, without regard to case.
  /// \throws DatabaseError without provider errors: kItemNotFound when the procedure has no parameter of that name,
  ///         kWrongType when the value does not fit (text that is no number or date for such a parameter, or text
  ///         longer than the parameter)
  void SetParameter(const QString& name, const Value& value);
  /// Sets a parameter by position; 1 is the first after the return value. Throws as `SetParameter` by name does.
  void SetParameter(int position, const Value& value);

  /// Calls the procedure with the parameters that were set.
  /// \return its rows; nothing when it returns none
  /// \throws DatabaseError; its provider errors are kept on the connection
  [[nodiscard]] std::unique_ptr<RowSource> Open();
  /// Calls the procedure and discards its rows.
  void Execute();

 private:
  void Assign(Parameter& parameter, const Value& value);
};

}  // namespace qbx
