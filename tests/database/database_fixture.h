// The statement routines over a scripted server, with everything around them.

#pragma once

#include <gtest/gtest.h>

#include "database/fake_server.h"
#include "database/statements.h"
#include "support/test_services.h"

namespace qbx::test {

class DatabaseFixture : public testing::Test, protected TestServices {
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
    if (Log().isEmpty()) return {};
    return Log().chopped(2).mid(10).split("\r\n10:20:30  ");
  }

  EventContext context_;
  LastError lastError_;
  FakeServer server_;
  Connection connection_{server_.Factory()};
  EventLog events_{connection_, context_, log};
  ErrorInterpretation interpretation_{context_, events_, lastError_, diagnostics};
  Statements statements_{connection_, interpretation_, events_, lastError_, diagnostics};
};

}  // namespace qbx::test
