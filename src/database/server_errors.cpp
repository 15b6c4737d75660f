#include "database/server_errors.h"

#include <algorithm>
#include <array>

namespace qbx {
namespace {

// A column that allows no NULL, a foreign key or a check, a unique index, a primary key.
constexpr std::array kConstraintNumbers = {515, 547, 2601, 2627};
// The time of a command is over, a lock could not be had in time.
constexpr std::array kTimeOutNumbers = {-2, 1222};
// No right to the database, or none of that name; the login is unknown, of the wrong kind or disabled, or its password
// is wrong or has to be changed.
constexpr std::array kLoginNumbers = {916, 4060, 18452, 18456, 18470, 18486, 18487, 18488};

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

DatabaseError LostConnectionError() {
  const QString text =
      QStringLiteral("[DBNETLIB][ConnectionWrite (send()).]General network error. Check your network documentation.");
  return DatabaseError(kUnspecifiedError, text, {{11, QStringLiteral("08S01"), text}});
}

}  // namespace qbx
