// A stored procedure that is called again and again with named parameters.

#pragma once

#include <QString>
#include <initializer_list>
#include <utility>

#include "database/command.h"

namespace qbx {

/// The layer below the statement routines, for code that catches database errors itself.
///
///   Procedure record(connection, "proc_addp_SMS");
///   record.Execute({{"@Customer", customer}, {"@Mobile_Number", mobile}});
///
/// The parameter list is fetched once and kept until the connection is opened again. Every call may throw
/// DatabaseError.
class Procedure {
 public:
  using Arguments = std::initializer_list<std::pair<const char*, Value>>;

  /// \param timeoutSeconds  for each call; 0: the connection's time-out
  Procedure(Connection& connection, const char* name, int timeoutSeconds = 0)
      : connection_(connection), name_(QString::fromLatin1(name)), timeoutSeconds_(timeoutSeconds) {}

  /// Calls it and discards its rows. An argument that is not named is not sent, so the procedure's default holds.
  void Execute(Arguments arguments);
  /// Calls it and discards its rows.
  /// \return whether there was a row
  [[nodiscard]] bool Finds(Arguments arguments);
  /// Calls it and returns its rows.
  [[nodiscard]] Recordset Open(Arguments arguments);

 private:
  void Prepare(Arguments arguments);

  Connection& connection_;
  QString name_;
  int timeoutSeconds_;
  Command command_;
  int preparedFor_ = 0;  // see Connection::SessionsOpened
};

}  // namespace qbx
