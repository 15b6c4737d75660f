// Which foreign key a failed statement violated.

#pragma once

#include "database/database_error.h"

namespace qbx {

class PreparedStatement;

/// SQLite does not name the constraint. The statement, whose parameters are still bound, is run again with the check
/// put off, the violations are looked up, and all of it is undone.
/// \return error 547: the referenced table and column for a value that does not exist, the referencing ones for a row
///         that is still referred to
[[nodiscard]] DatabaseError ForeignKeyError(PreparedStatement& statement);

}  // namespace qbx
