#include "database/odbc/odbc_session.h"

#include <algorithm>
#include <utility>

#include "database/odbc/native_errors.h"
#include "database/odbc/odbc_rows.h"
#include "database/packed_rows.h"

namespace qbx {
namespace {

/// Rows that were read already, so that the statement is free.
class KeptRows final : public RowSource {
 public:
  explicit KeptRows(RowSource& source) : columns_(source.Columns()), rows_(static_cast<int>(columns_.size())) {
    while (source.Next())
      rows_.Append(source);
  }
  [[nodiscard]] const std::vector<Column>& Columns() const override { return columns_; }
  bool Next() override { return ++row_ < rows_.Count(); }
  [[nodiscard]] Cell At(int column) const override { return rows_.At(row_, column); }

 private:
  std::vector<Column> columns_;
  PackedRows rows_;
  qint64 row_ = -1;
};

SQLPOINTER Number(std::size_t number) {
  return reinterpret_cast<SQLPOINTER>(number);  // how attributes are handed over
}

OdbcHandle Environment() {
  OdbcHandle environment(SQL_HANDLE_ENV, nullptr);
  ::SQLSetEnvAttr(environment.Get(), SQL_ATTR_ODBC_VERSION, Number(SQL_OV_ODBC3), 0);
  return environment;
}

[[noreturn]] void NotYet() {
  const QString text = QStringLiteral("This cannot be done over ODBC yet.");
  throw DatabaseError(kStatementFailed, text, {{0, QString(), text}});
}

}  // namespace

OdbcSession::OdbcSession(const ConnectionTarget& target, const Login& login, int loginTimeoutSeconds,
                         const OdbcSettings& settings)
    : environment_(Environment()), connection_(SQL_HANDLE_DBC, environment_.Get()) {
  const ServerAddress address = LocateServer(target.server);
  const OdbcConnectionString composed = ComposeConnectionString(address, target.database, login, settings);
  ::SQLSetConnectAttrW(connection_.Get(), SQL_ATTR_LOGIN_TIMEOUT, Number(static_cast<std::size_t>(loginTimeoutSeconds)),
                       0);
  std::vector<SQLWCHAR> text = OdbcText(composed.text);
  const SQLRETURN connected =
      ::SQLDriverConnectW(connection_.Get(), nullptr, text.data(), SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
  std::ranges::fill(text, SQLWCHAR{0});
  if (!SQL_SUCCEEDED(connected)) throw FailureToConnect(connection_.Records(), settings.encrypt);
}

OdbcSession::~OdbcSession() {
  if (depth_ > 0) ::SQLEndTran(SQL_HANDLE_DBC, connection_.Get(), SQL_ROLLBACK);
  ::SQLDisconnect(connection_.Get());
}

std::unique_ptr<RowSource> OdbcSession::Execute(const QString& batch) {
  const OdbcHandle statement(SQL_HANDLE_STMT, connection_.Get());
  ::SQLSetStmtAttrW(statement.Get(), SQL_ATTR_QUERY_TIMEOUT, Number(static_cast<std::size_t>(timeout_)), 0);
  std::vector<SQLWCHAR> text = OdbcText(batch);
  const struct Running {
    Running(OdbcSession& owner, SQLHANDLE handle) : session(owner) {
      const std::lock_guard lock(session.runningMutex_);
      session.running_ = handle;
    }
    ~Running() {
      const std::lock_guard lock(session.runningMutex_);
      session.running_ = nullptr;
    }
    OdbcSession& session;
  } running(*this, statement.Get());
  // A prepared batch gives the errors of all its statements, one that is run at once those of the first that failed.
  SQLRETURN ran = ::SQLPrepareW(statement.Get(), text.data(), SQL_NTS);
  if (SQL_SUCCEEDED(ran)) ran = ::SQLExecute(statement.Get());
  return LastResult(statement, ran);
}

std::unique_ptr<RowSource> OdbcSession::LastResult(const OdbcHandle& statement, SQLRETURN ran) {
  std::unique_ptr<RowSource> last;
  for (; ran != SQL_NO_DATA || last == nullptr; ran = ::SQLMoreResults(statement.Get())) {
    if (ran == SQL_NO_DATA) {  // a statement without rows or count, or the end
      ran = ::SQLMoreResults(statement.Get());
      if (ran == SQL_NO_DATA) break;
    }
    if (!SQL_SUCCEEDED(ran)) Fail(statement);
    SQLSMALLINT columns = 0;
    if (!SQL_SUCCEEDED(::SQLNumResultCols(statement.Get(), &columns))) Fail(statement);
    if (columns == 0) continue;
    OdbcRows rows(statement);
    last = std::make_unique<KeptRows>(rows);
  }
  return last;
}

std::unique_ptr<RowSource> OdbcSession::Call(const QString&, std::span<const Parameter>) {
  NotYet();
}

std::vector<Parameter> OdbcSession::DescribeProcedure(const QString&) {
  NotYet();
}

void OdbcSession::DeleteRow(const QString&, const QString&, const Value&) {
  NotYet();
}

void OdbcSession::UpdateRow(const QString&, const QString&, const Value&, std::span<const QString>,
                            std::span<const Value>) {
  NotYet();
}

void OdbcSession::InsertRow(const QString&, std::span<const QString>, std::span<const Value>) {
  NotYet();
}

void OdbcSession::SwitchAutocommit(bool on) {
  const auto mode = on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF;
  if (!SQL_SUCCEEDED(::SQLSetConnectAttrW(connection_.Get(), SQL_ATTR_AUTOCOMMIT, Number(mode), 0))) Fail(connection_);
}

void OdbcSession::Begin() {
  if (depth_ == 0) SwitchAutocommit(false);
  ++depth_;
}

void OdbcSession::Commit() {
  if (depth_ == 0 || --depth_ > 0) return;
  EndTransaction(SQL_COMMIT);
}

void OdbcSession::Rollback() {
  if (std::exchange(depth_, 0) == 0) return;
  try {
    EndTransaction(SQL_ROLLBACK);
  } catch (const DatabaseError&) {
    // The server rolls back what a lost connection leaves.
  }
}

/// Ends it before autocommit is on again: the driver would roll it back.
void OdbcSession::EndTransaction(SQLSMALLINT how) {
  if (!SQL_SUCCEEDED(::SQLEndTran(SQL_HANDLE_DBC, connection_.Get(), how))) Fail(connection_);
  SwitchAutocommit(true);
}

void OdbcSession::Interrupt() {
  const std::lock_guard lock(runningMutex_);
  interrupted_ = true;
  if (running_ != nullptr) ::SQLCancel(running_);
}

bool OdbcSession::IsDead() const {
  SQLUINTEGER dead = SQL_CD_FALSE;
  ::SQLGetConnectAttrW(connection_.Get(), SQL_ATTR_CONNECTION_DEAD, &dead, sizeof(dead), nullptr);
  return dead == SQL_CD_TRUE;
}

void OdbcSession::Fail(const OdbcHandle& handle) {
  const std::vector<NativeError> records = handle.Records();  // before anything else is called
  throw FailureOfCall(records, IsDead(), interrupted_.exchange(false) ? CallEnd::kCancelled : CallEnd::kFailed);
}

}  // namespace qbx
