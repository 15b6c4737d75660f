// A stored procedure that is called again and again with named parameters.

#pragma once

#include <QString>
#include <initializer_list>
#include <utility>

#include "database/command.h"

namespace qbx {

/// The layer below the statement routines, for those who catch database errors themselves.
///
///   Procedure record(connection, "proc_addp_SMS");
///   record.Execute({{"@Customer", customer}, {"@Mobile_Number", mobile}});
///
/// The parameter list is fetched once and kept until the connection is opened anew. Every call may throw DatabaseError.
class Procedure {
 public:
  using Arguments = std::initializer_list<std::pair<const char*, Value>>;

  /// \param timeoutSeconds  of each call; 0: that of the connection
  Procedure(Connection& connection, const char* name, int timeoutSeconds = 0)
      : connection_(connection), name_(QString::fromLatin1(name)), timeoutSeconds_(timeoutSeconds) {}

  /// Calls it and discards any rows. What is not named is not sent: the procedure's default holds.
  void Execute(Arguments arguments);
  /// Calls it and discards its rows.
  /// \return whether there was one
  [[nodiscard]] bool Finds(Arguments arguments);
  /// Calls it and returns its rows.
  [[nodiscard]] Recordset Open(Arguments arguments);

 private:
  void Prepare(Arguments arguments);

  Connection& connection_;
  QString name_;
  int timeoutSeconds_;
  Command command_;
  const Session* preparedFor_ = nullptr;
};

}  // namespace qbx
