// The F1 help of each page, of the campaign manager and of the spreadsheet. Other windows have their texts beside them.

#pragma once

#include "platform/ui/help_window.h"

namespace qbx {

/// \param tab  number of the step; 0 for the start panel
[[nodiscard]] HelpText PageHelp(int tab, bool boatEdition);

[[nodiscard]] HelpText ManagerHelp();

[[nodiscard]] HelpText SpreadsheetHelp();

}  // namespace qbx
