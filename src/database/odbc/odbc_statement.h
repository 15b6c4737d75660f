// One statement on its way: run, its results read, its failures collected.

#pragma once

#include <memory>
#include <vector>

#include "database/odbc/odbc_handles.h"
#include "database/odbc/odbc_parameters.h"
#include "database/session.h"

namespace qbx {

/// What one run of a statement left.
struct OdbcOutcome {
  std::unique_ptr<RowSource> last;   ///< its last result with columns, read to its end; null: none
  std::unique_ptr<RowSource> apart;  ///< the result that was to be set apart; null: none
  std::vector<NativeError> errors;   ///< of all its results, as they came; empty: it succeeded
};

/// A statement's handle while it is run.
class OdbcStatement {
 public:
  /// \throws DatabaseError
  OdbcStatement(const OdbcHandle& connection, int timeoutSeconds, bool dataAnywhere);

  [[nodiscard]] const OdbcHandle& Handle() const { return handle_; }

  /// \param prepared  costs one more exchange with the server, and gives the errors of all statements of a batch
  /// \return as the driver's call; a failure leaves its records on the handle
  /// \throws OdbcFailure  for a parameter that the driver does not take
  SQLRETURN Run(const QString& sql, OdbcParameters& parameters, bool prepared);

  /// Reads all results to their ends. A failure of the server does not end the reading: the rest may tell more.
  /// \param ran       what was returned by the call that led to the present result
  /// \param setApart  name of the first column of a result that is not one of the statement's own; empty: there is none
  [[nodiscard]] OdbcOutcome ReadAll(SQLRETURN ran, const QString& setApart);

  /// Whether the present result has columns.
  [[nodiscard]] bool HasColumns() const;
  /// Of the present result; -1: not known.
  [[nodiscard]] SQLLEN ChangedRows() const;

 private:
  void ReadResult(OdbcOutcome& outcome, const QString& setApart);

  OdbcHandle handle_;
  bool dataAnywhere_;
};

}  // namespace qbx
