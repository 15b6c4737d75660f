// The values that an option can have.

#pragma once

#include <QString>
#include <optional>

#include "database/value.h"
#include "settings/options.h"

namespace qbx::ctl {

/// A typed value, converted for the option's column. A flag is on/off, true/false, yes/no or 1/0.
/// \param problem  on failure: what the option is, to follow "does not fit NAME, which is"
/// \return nothing when the option cannot have the value
[[nodiscard]] std::optional<Value> OptionValue(const OptionKey& key, const QString& text, QString& problem);

}  // namespace qbx::ctl
