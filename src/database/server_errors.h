// What every driver says the same way: the pending number of a server's error, and a connection that is lost.

#pragma once

#include "database/database_error.h"

namespace qbx {

/// Whether it is the server's number of a violated constraint.
[[nodiscard]] bool IsConstraintNumber(int serverNumber);

/// The number of the pending error for an error of the server.
[[nodiscard]] int PendingNumber(int serverNumber);

/// The connection is lost.
[[nodiscard]] DatabaseError LostConnectionError();

}  // namespace qbx
