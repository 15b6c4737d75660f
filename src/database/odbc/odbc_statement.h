// Runs one statement, reads its results, and collects its errors.

#pragma once

#include <memory>
#include <vector>

#include "database/odbc/odbc_handles.h"
#include "database/odbc/odbc_parameters.h"
#include "database/session.h"

namespace qbx {

/// The results and errors of one run of a statement.
struct OdbcOutcome {
  std::unique_ptr<RowSource> last;   ///< the last result with columns, read to its end; null: none
  std::unique_ptr<RowSource> apart;  ///< the result that `setApart` named; null: none
  std::vector<NativeError> errors;   ///< of all results, in the order of arrival; empty: success
};

/// A statement with its handle.
class OdbcStatement {
 public:
  /// \throws DatabaseError
  OdbcStatement(const OdbcHandle& connection, int timeoutSeconds, bool dataAnywhere);

  [[nodiscard]] const OdbcHandle& Handle() const { return handle_; }

  /// \param prepared  costs one more exchange with the server, but gives the errors of all statements of a batch
  /// \return the result of the driver's call; after a failure, the handle has the records
  /// \throws OdbcFailure  when the driver does not accept a parameter
  SQLRETURN Run(const QString& sql, OdbcParameters& parameters, bool prepared);

  /// Reads all results to their ends. It goes on after an error of the server, because more errors may follow.
  /// \param ran       the result of the driver's call that led to the current result
  /// \param setApart  the name of the first column of the result to keep apart from the others; empty: there is none
  [[nodiscard]] OdbcOutcome ReadAll(SQLRETURN ran, const QString& setApart);

  /// Whether the current result has columns.
  [[nodiscard]] bool HasColumns() const;
  /// The number of rows that the current result changed; -1: not known.
  [[nodiscard]] SQLLEN ChangedRows() const;

 private:
  void ReadResult(OdbcOutcome& outcome, const QString& setApart);

  OdbcHandle handle_;
  bool dataAnywhere_;
};

}  // namespace qbx
