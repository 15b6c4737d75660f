// The small services that every module uses, as one argument.

#pragma once

#include "diagnostics/error_report.h"
#include "diagnostics/log_file.h"
#include "diagnostics/status_box.h"
#include "platform/clock.h"
#include "platform/user_interface.h"

namespace qbx {

/// References only; the Application owns the objects.
struct Diagnostics {
  const Clock& clock;
  const LogFile& log;
  UserInterface& ui;
  StatusBox& status;
  ErrorReport& errors;
};

}  // namespace qbx
