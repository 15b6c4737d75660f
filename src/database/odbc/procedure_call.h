// Procedures with named parameters: asks the server for the parameters, and writes a call as a statement.

#pragma once

#include <span>
#include <vector>

#include "database/odbc/odbc_handles.h"
#include "database/odbc/odbc_parameters.h"
#include "database/session.h"

namespace qbx {

/// The statement that calls a procedure. ODBC's own calls cannot name parameters or leave one out.
class NamedCall {
 public:
  /// The statement's last result is one row with the return value and the output parameters. This is the name of its
  /// first column.
  static constexpr char kOutcomeColumn[] = "QbxReturn";

  NamedCall(const QString& procedure, std::span<const Parameter> parameters);

  [[nodiscard]] const QString& Text() const { return text_; }
  [[nodiscard]] OdbcParameters& Values() { return values_; }

  /// Puts the return value and the output parameters of that row into the parameters.
  static void Take(RowSource& outcome, std::span<Parameter> parameters);

 private:
  QString text_;
  OdbcParameters values_;
};

/// Asks the server for the parameters of a procedure.
/// \param statement  a new one
/// \return empty when the procedure does not exist, or the login may not use it
/// \throws OdbcFailure
[[nodiscard]] std::vector<Parameter> ReadParameterList(const OdbcHandle& statement, const QString& procedure,
                                                       bool dataAnywhere);

/// The error of a call of a procedure that does not exist. A server also hides the parameters of a procedure that the
/// login may not use.
[[nodiscard]] DatabaseError ProcedureMissing(const QString& procedure);

}  // namespace qbx
