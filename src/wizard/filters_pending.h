// Whether the rows were selected with the present filters.

#pragma once

#include <QString>

#include "wizard/wizard_state.h"

namespace qbx {

/// The note beside the rows and the filters while the present filters would select other rows. "Next >" on step 1
/// selects without filters (except "Include Opted Out"); a filter that is changed later is applied by "Refresh" or
/// "Next >". Empty when the rows match the filters.
[[nodiscard]] QString FiltersPendingText(const WizardState& state);

}  // namespace qbx
