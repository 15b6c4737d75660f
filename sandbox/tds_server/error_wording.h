// Words the engine's errors as a current server does.

#pragma once

#include "database/database_error.h"
#include "tds_server/answer.h"

namespace qbx::tds {

/// Writes all entries of an error, with their classes.
void WriteError(Answer& answer, const DatabaseError& error);

/// Whether the statements after the failed one are left out.
[[nodiscard]] bool EndsBatch(const DatabaseError& error);

}  // namespace qbx::tds
