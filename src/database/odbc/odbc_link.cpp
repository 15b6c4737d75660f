#include "database/odbc/odbc_link.h"

#include <algorithm>

#include "database/server_errors.h"

namespace qbx {
namespace {

// The watchdog barks this long after the time limit. When the server sends nothing, the driver's own limit comes first.
constexpr auto kGrace = std::chrono::milliseconds(250);
constexpr auto kCancelAgain = std::chrono::milliseconds(500);
const QLatin1String kCursorStateWrong("24000");

OdbcHandle Environment() {
  OdbcHandle environment(SQL_HANDLE_ENV, nullptr);
  ::SQLSetEnvAttr(environment.Get(), SQL_ATTR_ODBC_VERSION, OdbcNumber(SQL_OV_ODBC3), 0);
  return environment;
}

bool FetchesAnywhere(const OdbcHandle& connection) {
  constexpr SQLUINTEGER kAnywhere = SQL_GD_ANY_COLUMN;
  SQLUINTEGER supported = 0;
  ::SQLGetInfoW(connection.Get(), SQL_GETDATA_EXTENSIONS, &supported, sizeof(supported), nullptr);
  return (supported & kAnywhere) == kAnywhere;
}

}  // namespace

OdbcLink::OdbcLink(const QString& text, int loginTimeoutSeconds, RoundTrips& roundTrips)
    : environment_(Environment()),
      connection_(SQL_HANDLE_DBC, environment_.Get()),
      roundTrips_(roundTrips),
      watchdog_([this] { TimeIsOver(); }) {
  ::SQLSetConnectAttrW(connection_.Get(), SQL_ATTR_LOGIN_TIMEOUT,
                       OdbcNumber(static_cast<std::size_t>(loginTimeoutSeconds)), 0);
  std::vector<SQLWCHAR> units = OdbcText(text);
  const SQLRETURN connected =
      ::SQLDriverConnectW(connection_.Get(), nullptr, units.data(), SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
  std::ranges::fill(units, SQLWCHAR{0});  // the password
  if (!SQL_SUCCEEDED(connected)) throw OdbcFailure{connection_.Records()};
  dataAnywhere_ = FetchesAnywhere(connection_);
}

OdbcLink::~OdbcLink() {
  ::SQLDisconnect(connection_.Get());
}

std::optional<std::chrono::nanoseconds> OdbcLink::TimeLeftSince(std::chrono::steady_clock::time_point started) const {
  if (timeLimit_ <= 0) return std::nullopt;
  const auto spent = std::chrono::steady_clock::now() - started;
  return std::chrono::seconds(timeLimit_) - spent;
}

void OdbcLink::Interrupt() {
  const std::lock_guard lock(runningMutex_);
  interrupted_ = true;
  if (running_ != nullptr && mayInterrupt_) Cancel();
}

void OdbcLink::TimeIsOver() {
  const std::lock_guard lock(runningMutex_);
  if (running_ == nullptr) return;
  timedOut_ = true;
  Cancel();
}

/// One cancelling is not enough: the driver ignores it before it has sent the statement. Too many do harm: a cancelling
/// at the end of a statement confuses the driver. So there is a pause between two of them.
void OdbcLink::Cancel() {
  const auto now = std::chrono::steady_clock::now();
  if (now - cancelled_ < kCancelAgain) return;
  cancelled_ = now;
  ::SQLCancel(running_);
}

bool OdbcLink::DriverSaysDead() const {
  SQLUINTEGER dead = SQL_CD_FALSE;
  ::SQLGetConnectAttrW(connection_.Get(), SQL_ATTR_CONNECTION_DEAD, &dead, sizeof(dead), nullptr);
  return dead == SQL_CD_TRUE;
}

void OdbcLink::Fail(const std::vector<NativeError>& records) {
  // This program reads every result to its end. A driver that claims otherwise is confused, and does not recover.
  dead_ = dead_ || DriverSaysDead() || std::ranges::any_of(records, [](const NativeError& record) {
            return record.number == 0 && record.sqlState == kCursorStateWrong;
          });
  bool timedOut = false;
  {
    const std::lock_guard lock(runningMutex_);
    timedOut = std::exchange(timedOut_, false);
  }
  const bool interrupted = mayInterrupt_ && interrupted_.exchange(false);
  failure_ = FailureOfCall(records, dead_,
                           timedOut      ? CallEnd::kTimedOut
                           : interrupted ? CallEnd::kCancelled
                                         : CallEnd::kFailed);
  throw DatabaseError(*failure_);
}

void OdbcLink::GiveUp() {
  if (std::exchange(dead_, true)) return;
  ::SQLDisconnect(connection_.Get());
}

OdbcLink::Turn::Turn(OdbcLink& link, const OdbcHandle& statement, int exchanges, MayInterrupt mayInterrupt)
    : link_(link), watched_(link.timeLimit_ > 0) {
  Start(statement, mayInterrupt);
  link.roundTrips_ += exchanges;
  if (watched_) link.watchdog_.Watch(std::chrono::seconds(link.timeLimit_) + kGrace);
}

OdbcLink::Turn::Turn(OdbcLink& link, const OdbcHandle& statement, std::optional<std::chrono::nanoseconds> left,
                     MayInterrupt mayInterrupt)
    : link_(link), watched_(left.has_value()) {
  Start(statement, mayInterrupt);
  if (watched_)
    link.watchdog_.Watch(std::chrono::ceil<std::chrono::milliseconds>(std::max(*left, std::chrono::nanoseconds(0))) +
                         kGrace);
}

void OdbcLink::Turn::Start(const OdbcHandle& statement, MayInterrupt mayInterrupt) {
  if (link_.dead_) throw LostConnectionError();
  const std::lock_guard lock(link_.runningMutex_);
  link_.mayInterrupt_ = mayInterrupt == MayInterrupt::kYes;
  link_.timedOut_ = false;
  if (link_.mayInterrupt_ && link_.interrupted_.exchange(false)) throw FailureOfCall({}, false, CallEnd::kCancelled);
  link_.running_ = statement.Get();
  link_.cancelled_ = {};
}

OdbcLink::Turn::~Turn() {
  if (watched_) link_.watchdog_.Rest();
  const std::lock_guard lock(link_.runningMutex_);
  link_.running_ = nullptr;
}

}  // namespace qbx
