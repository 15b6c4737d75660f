// A campaign on a SQL Server, from the query to the last message.

#include <gtest/gtest.h>

#include "database/embedded/engine.h"
#include "garage.h"
#include "support/fixed_clock.h"
#include "tds_server/server.h"

namespace qbx::test {
namespace {

TEST(SqlServer, SendsACampaignWithFewExchanges) {
  constexpr int kCustomers = 60;
  constexpr int kExchangesOfMessage = 8;
  const Garage garage(kCustomers);
  garage.MakeEverybodyReachable();
  const FixedClock clock;
  EmbeddedEngine engine(garage.Path(), clock);
  tds::Server server(engine);
  garage.Folder().Write(
      QStringLiteral("registry/machine.reg"),
      "Windows Registry Editor Version 5.00\n\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Korvel Manager\\Login]\n\"Server\"=\"127.0.0.1," +
          QByteArray::number(server.Port()) + "\"\n");
  const QJsonValue tried = garage.Done("connect --test");
  EXPECT_EQ((Text(tried, "login") + Text(tried, "encryption")).toStdString(), "sanone");
  const CtlResult install = garage.Run("server install");  // the embedded engine behind the server knows no T-SQL
  EXPECT_TRUE(install.Error() == "script_refused" && install.err.contains("batch 3 of")) << install.err.constData();
  const SandboxProcess sandbox;
  garage.Use(sandbox);
  const QString campaign = garage.MakeCampaign();
  server.PlannedFaults().Add(
      {.kind = tds::FaultKind::kReset, .match = QStringLiteral("BEGIN TRANSACTION"), .times = 0});
  for (const char* command : {"query %1", "send %1 --yes"})
    EXPECT_EQ(garage.Run(command, {campaign}).Error(), "database_away") << command;
  server.PlannedFaults().Clear();
  const int before = server.Counted().requests;
  const QJsonValue sent = garage.Done("send %1 --yes", {campaign});
  const int messages = Number(sent, "sms_sent") + Number(sent, "email_sent");
  EXPECT_EQ(messages, 2 * kCustomers);
  EXPECT_LE(server.Counted().requests - before, kExchangesOfMessage * messages);
  EXPECT_EQ(Accepted(sandbox, "texts").size() + Accepted(sandbox, "mails").size(),
            static_cast<std::size_t>(2 * kCustomers));
}

}  // namespace
}  // namespace qbx::test
