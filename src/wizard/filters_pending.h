// Whether the rows are those of the filters.

#pragma once

#include <QString>

#include "wizard/wizard_state.h"

namespace qbx {

/// What stands beside the rows, and beside the filters, while the query would select other rows with the filters as they are now: "Next >" on
/// step 1 selects without them (but for "Include Opted Out"), and a filter that is changed afterwards waits for "Refresh" or "Next >". Empty when all is as it looks.
[[nodiscard]] QString FiltersPendingText(const WizardState& state);

}  // namespace qbx
