// What the value of an option can be.

#pragma once

#include <QString>
#include <optional>

#include "database/value.h"
#include "settings/options.h"

namespace qbx::ctl {

/// A value as it was typed, as the option's column takes it: flags are on/off, true/false, yes/no or 1/0.
/// \param problem  otherwise: what the option is, behind "does not fit NAME, which is"
/// \return nothing when the option cannot be that
[[nodiscard]] std::optional<Value> OptionValue(const OptionKey& key, const QString& text, QString& problem);

}  // namespace qbx::ctl
