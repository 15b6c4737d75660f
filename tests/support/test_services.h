// The log, the status box and the error reports, in a folder of the test. A test folder that includes this links
// qbx_diagnostics.

#pragma once

#include <QFile>

#include "diagnostics/diagnostics.h"
#include "support/fixed_clock.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace qbx::test {

struct TestServices {
  TempFolder folder;
  FixedClock clock;
  ScriptedUi ui;
  LogFile log{clock, folder.File("MARKETING.LOG")};
  StatusBox status{ui};
  ErrorReport errors{log, status, ui};
  Diagnostics diagnostics{clock, log, ui, status, errors};

  [[nodiscard]] QString Log() const {
    return QFile::exists(log.Path()) ? QString::fromUtf8(folder.Read("MARKETING.LOG")) : QString();
  }
};

}  // namespace qbx::test
