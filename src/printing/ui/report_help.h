// The F1 help of the report window and of its Print dialog.

#pragma once

#include "platform/ui/help_window.h"

namespace qbx {

[[nodiscard]] HelpText ReportViewHelp();
[[nodiscard]] HelpText SelectPrinterHelp();

}  // namespace qbx
