// What F1 says on each page and in the campaign manager. All these texts stand here.

#pragma once

#include "platform/ui/help_window.h"

namespace qbx {

/// \param tab  number of the step; 0: the start panel
[[nodiscard]] HelpText PageHelp(int tab, bool boatEdition);

[[nodiscard]] HelpText ManagerHelp();

}  // namespace qbx
