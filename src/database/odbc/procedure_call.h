// A procedure with named parameters: its list as the server tells it, and the text of a call.

#pragma once

#include <span>
#include <vector>

#include "database/odbc/odbc_handles.h"
#include "database/odbc/odbc_parameters.h"
#include "database/session.h"

namespace qbx {

/// ODBC has no named parameters, and no way to leave one out, so a call is a statement that makes it.
class NamedCall {
 public:
  /// Name of the first column of the row behind the procedure's own results, which has the return value and the
  /// outputs.
  static constexpr char kOutcomeColumn[] = "QbxReturn";

  NamedCall(const QString& procedure, std::span<const Parameter> parameters);

  [[nodiscard]] const QString& Text() const { return text_; }
  [[nodiscard]] OdbcParameters& Values() { return values_; }

  /// Puts the row into the parameters.
  static void Take(RowSource& outcome, std::span<Parameter> parameters);

 private:
  QString text_;
  OdbcParameters values_;
};

/// Asks for the parameter list.
/// \param statement  a fresh one
/// \return empty: there is no such procedure
/// \throws OdbcFailure
[[nodiscard]] std::vector<Parameter> ReadParameterList(const OdbcHandle& statement, const QString& procedure,
                                                       bool dataAnywhere);

/// That there is no such procedure, as a call of it would tell. A server shows the parameters of those procedures only
/// that the login may use.
[[nodiscard]] DatabaseError ProcedureMissing(const QString& procedure);

}  // namespace qbx
