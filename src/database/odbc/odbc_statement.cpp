#include "database/odbc/odbc_statement.h"

#include <algorithm>

#include "database/kept_rows.h"
#include "database/odbc/odbc_rows.h"
#include "util/text.h"

namespace qbx {
namespace {

/// Appends the records.
/// \return whether one of them is the server's; after an error of the driver alone, there is nothing more to read
bool Append(std::vector<NativeError>& errors, std::vector<NativeError> more) {
  const bool fromServer = std::ranges::any_of(more, IsFromServer);
  if (more.empty()) more.push_back({0, QStringLiteral("HY000"), QStringLiteral("The driver gave no reason.")});
  errors.insert(errors.end(), more.begin(), more.end());
  return fromServer;
}

}  // namespace

OdbcStatement::OdbcStatement(const OdbcHandle& connection, int timeoutSeconds, bool dataAnywhere)
    : handle_(SQL_HANDLE_STMT, connection.Get()), dataAnywhere_(dataAnywhere) {
  ::SQLSetStmtAttrW(handle_.Get(), SQL_ATTR_QUERY_TIMEOUT, OdbcNumber(static_cast<std::size_t>(timeoutSeconds)), 0);
}

SQLRETURN OdbcStatement::Run(const QString& sql, OdbcParameters& parameters, bool prepared) {
  parameters.BindTo(handle_);
  std::vector<SQLWCHAR> text = OdbcText(sql);
  if (!prepared) return ::SQLExecDirectW(handle_.Get(), text.data(), SQL_NTS);
  const SQLRETURN ready = ::SQLPrepareW(handle_.Get(), text.data(), SQL_NTS);
  return SQL_SUCCEEDED(ready) ? ::SQLExecute(handle_.Get()) : ready;
}

OdbcOutcome OdbcStatement::ReadAll(SQLRETURN ran, const QString& setApart) {
  OdbcOutcome outcome;
  // Returned by the run, "no data" is the success of a statement without rows and count. Returned later, it is the end.
  do {
    try {
      if (ran == SQL_ERROR || ran == SQL_INVALID_HANDLE) throw OdbcFailure{handle_.Records()};
      if (ran != SQL_NO_DATA) ReadResult(outcome, setApart);
    } catch (const OdbcFailure& failure) {
      if (!Append(outcome.errors, failure.records)) break;
    }
    ran = ::SQLMoreResults(handle_.Get());
  } while (ran != SQL_NO_DATA);
  return outcome;
}

void OdbcStatement::ReadResult(OdbcOutcome& outcome, const QString& setApart) {
  if (!HasColumns()) return;
  OdbcRows rows(handle_, dataAnywhere_);
  const bool apart = !setApart.isEmpty() && EqualsNoCase(rows.Columns().front().name, setApart);
  (apart ? outcome.apart : outcome.last) = std::make_unique<KeptRows>(rows);
}

bool OdbcStatement::HasColumns() const {
  SQLSMALLINT columns = 0;
  return SQL_SUCCEEDED(::SQLNumResultCols(handle_.Get(), &columns)) && columns > 0;
}

SQLLEN OdbcStatement::ChangedRows() const {
  SQLLEN rows = -1;
  ::SQLRowCount(handle_.Get(), &rows);
  return rows;
}

}  // namespace qbx
