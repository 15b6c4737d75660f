// Finds out which foreign key a failed statement violated.

#pragma once

#include "database/database_error.h"

namespace qbx {

class PreparedStatement;

/// The error of a violated foreign key. SQLite does not name the constraint. So the statement, whose parameters are
/// still bound, is run again with the check deferred, the violations are read, and the statement is undone.
/// \return error 547, with the referenced table and column when a value does not exist, and with the referencing ones
///         when the row is still in use
[[nodiscard]] DatabaseError ForeignKeyError(PreparedStatement& statement);

}  // namespace qbx
