// The statement routines over a scripted server, with everything around them.

#pragma once

#include <gtest/gtest.h>

#include "database/fake_server.h"
#include "database/statements.h"
#include "support/fixed_clock.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace qbx::test {

class DatabaseFixture : public testing::Test {
 protected:
  DatabaseFixture() {
    context_.DatabaseVersion = 999;
    context_.user = "Jo Brown";
    context_.campaignId = -7;
    server_.parameters = {{.name = "@RETURN_VALUE", .direction = ParameterDirection::kReturnValue}};
    for (const char* name : {"@Username", "@EventType", "@TableID", "@TableKey", "@Details"})
      server_.parameters.push_back({.name = QLatin1String(name)});
  }

  void Open() { connection_.Open("Data Source=S;Initial Catalog=QBX;", {"sa", "pw"}); }

  /// Lines of the log without their time.
  [[nodiscard]] QStringList LogLines() const {
    if (folder_.Names().isEmpty()) return {};
    QStringList lines = QString::fromUtf8(folder_.Read("log")).split("\r\n10:20:30  ");
    lines.first().remove(0, 10);
    lines.last().chop(2);
    return lines;
  }

  TempFolder folder_;
  FixedClock clock_;
  LogFile log_{clock_, folder_.File("log")};
  ScriptedUi ui_;
  StatusBox status_{ui_};
  ErrorReport errors_{log_, status_, ui_};
  Diagnostics diagnostics_{clock_, log_, ui_, status_, errors_};
  EventContext context_;
  LastError lastError_;
  FakeServer server_;
  Connection connection_{server_.Factory()};
  EventLog events_{connection_, context_, log_};
  ErrorInterpretation interpretation_{context_, events_, lastError_, diagnostics_};
  Statements statements_{connection_, interpretation_, events_, lastError_, diagnostics_};
};

}  // namespace qbx::test
