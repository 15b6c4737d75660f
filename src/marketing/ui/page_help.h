// What F1 says on each page, in the campaign manager and in the spreadsheet. All these texts stand here; other windows have their own.

#pragma once

#include "platform/ui/help_window.h"

namespace qbx {

/// \param tab  number of the step; 0: the start panel
[[nodiscard]] HelpText PageHelp(int tab, bool boatEdition);

[[nodiscard]] HelpText ManagerHelp();

[[nodiscard]] HelpText SpreadsheetHelp();

}  // namespace qbx
