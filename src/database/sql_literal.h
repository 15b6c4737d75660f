// A value as it is written in a statement.

#pragma once

#include <QString>

#include "database/value.h"

namespace qbx {

/// NULL, a number, or a quoted text; a date and time as 'yyyy-mm-dd hh:mm:ss.zzz'; a flag as 1 or 0.
[[nodiscard]] QString SqlLiteral(const Value& value);

}  // namespace qbx
