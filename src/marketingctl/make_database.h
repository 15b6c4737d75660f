// Where `sample` and `init` put a database.

#pragma once

#include <QString>
#include <optional>

#include "marketingctl/runner.h"

namespace qbx::ctl {

/// The database file of a program folder, by the flags and the edition of the folder; always inside the folder. Makes
/// the folder when it is missing.
/// \return nothing, with the reason on stderr, when no database can have the name, the folder cannot be made, or the
///         folder has a database and `replace` is false
[[nodiscard]] std::optional<QString> DatabaseFileFor(const QString& folder, const GlobalFlags& flags, bool replace);

}  // namespace qbx::ctl
