// Where `sample` and `init` put a database.

#pragma once

#include <QString>
#include <optional>

#include "marketingctl/runner.h"

namespace qbx::ctl {

/// The database file of a program folder, by the flags and the edition of the folder, always inside it. Makes the folder when it is missing.
/// \return nothing, with the reason on stderr, when there can be no database of the name, the folder cannot be made or already holds a database and `replace` is false
[[nodiscard]] std::optional<QString> DatabaseFileFor(const QString& folder, const GlobalFlags& flags, bool replace);

}  // namespace qbx::ctl
