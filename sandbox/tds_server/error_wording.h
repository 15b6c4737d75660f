// The engine's errors as a server of today words them.

#pragma once

#include "database/database_error.h"
#include "tds_server/answer.h"

namespace qbx::tds {

/// Writes all of its errors, with their classes.
void WriteError(Answer& answer, const DatabaseError& error);

/// Whether the statements behind the failed one are left out.
[[nodiscard]] bool EndsBatch(const DatabaseError& error);

}  // namespace qbx::tds
