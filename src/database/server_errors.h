// What all drivers have in common: the pending number of a server's error, which failures pass, and the error of a lost
// connection.

#pragma once

#include "database/database_error.h"

namespace qbx {

/// Whether the server's number means a violated constraint.
[[nodiscard]] bool IsConstraintNumber(int serverNumber);

/// The number of the pending error for an error of the server.
[[nodiscard]] int PendingNumber(int serverNumber);

/// Whether a server that restarts can be behind a failure to connect: nobody answers yet, the server starts or stops,
/// or it has not recovered the database yet. A login that is refused is not: trying again could lock it.
[[nodiscard]] bool MayComeBack(const DatabaseError& error);

/// Whether a message for the user is about a lost connection.
[[nodiscard]] bool SaysConnectionLost(const QString& message);

/// Whether the server rolled the work back to end a deadlock, so that it can be done again.
[[nodiscard]] bool IsDeadlock(const DatabaseError& error);

/// The server's number and words for a call in a transaction that it has rolled back already.
inline constexpr int kTransactionDoomed = 3930;
[[nodiscard]] QString TransactionDoomedText();

/// The error of a lost connection.
[[nodiscard]] DatabaseError LostConnectionError();

}  // namespace qbx
