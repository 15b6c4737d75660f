// What F1 says in the window of a report and in the dialog of its Print.

#pragma once

#include "platform/ui/help_window.h"

namespace qbx {

[[nodiscard]] HelpText ReportViewHelp();
[[nodiscard]] HelpText SelectPrinterHelp();

}  // namespace qbx
