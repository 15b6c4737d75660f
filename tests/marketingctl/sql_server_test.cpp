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
  EXPECT_EQ(Text(garage.Done("connect --test"), "encryption").toStdString(), "none");
  const SandboxProcess sandbox;
  garage.Use(sandbox);
  const QString campaign = garage.MakeCampaign();
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
