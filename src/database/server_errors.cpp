#include "database/server_errors.h"

#include <algorithm>
#include <array>

namespace qbx {
namespace {

// NULL where none is allowed; a foreign key or check; a unique index; a primary key.
constexpr std::array kConstraintNumbers = {515, 547, 2601, 2627};
// The command took too long; a lock was not free in time.
constexpr std::array kTimeOutNumbers = {-2, 1222};
// The database: no right to it, or no such database. The login: unknown, of the wrong kind, disabled, or with a wrong
// or expired password.
constexpr std::array kLoginNumbers = {916, 4060, 18452, 18456, 18470, 18486, 18487, 18488};
// The database: cannot be started, opened or recovered yet. The server: stops, is paused, or is being upgraded.
constexpr std::array kPassingNumbers = {904, 921, 922, 4060, 6005, 17142, 18401};
constexpr int kDeadlockVictim = 1205;  // the transaction was chosen to end a deadlock

template <std::size_t size>
bool Has(const std::array<int, size>& numbers, int number) {
  return std::ranges::find(numbers, number) != numbers.end();
}

}  // namespace

bool IsConstraintNumber(int serverNumber) {
  return Has(kConstraintNumbers, serverNumber);
}

int PendingNumber(int serverNumber) {
  if (IsConstraintNumber(serverNumber)) return kConstraintFailed;
  if (Has(kTimeOutNumbers, serverNumber)) return kCommandTimedOut;
  return Has(kLoginNumbers, serverNumber) ? kAuthenticationFailed : kStatementFailed;
}

bool MayComeBack(const DatabaseError& error) {
  return error.ConnectionLost() || std::ranges::any_of(error.Errors(), [](const ProviderError& each) {
           return Has(kPassingNumbers, each.number);
         });
}

bool IsDeadlock(const DatabaseError& error) {
  return std::ranges::any_of(error.Errors(), [](const ProviderError& each) { return each.number == kDeadlockVictim; });
}

bool SaysConnectionLost(const QString& message) {
  return message.contains(QLatin1String("general network error"), Qt::CaseInsensitive);
}

QString TransactionDoomedText() {
  return QStringLiteral(
      "The current transaction cannot be committed and cannot support operations that write to the log file. Roll back the transaction.");
}

DatabaseError LostConnectionError() {
  const QString text =
      QStringLiteral("[DBNETLIB][ConnectionWrite (send()).]General network error. Check your network documentation.");
  return DatabaseError(kUnspecifiedError, text, {{11, QStringLiteral("08S01"), text}});
}

}  // namespace qbx
