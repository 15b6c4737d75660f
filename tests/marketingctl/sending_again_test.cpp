// A campaign that is sent again: after failures, a pause, and beside a run that is under way.

#include <gtest/gtest.h>
#include <signal.h>

#include <set>

#include "garage.h"

namespace qbx::test {

namespace {

CtlResult Send(const Garage& garage, const QString& id) {
  return garage.Run("send %1 --yes", {id});
}

QJsonValue CampaignLog(const Garage& garage, const QString& id) {
  return garage.Done("log --campaign %1", {id});
}

/// The customers whose rows are in doubt.
std::set<int> CustomersInDoubt(const Garage& garage, const QString& id) {
  std::set<int> customers;
  for (const auto& row : At(CampaignLog(garage, id), "in_doubt").toArray())
    customers.insert(Number(row, "Customer"));
  return customers;
}

/// Everybody was told once, those in doubt at most once.
void ExpectNobodyToldTwice(const SandboxProcess& sandbox, const Garage& garage, const QString& id) {
  const std::set<int> doubtful = CustomersInDoubt(garage, id);
  Received texts = Accepted(sandbox, "texts");
  Received mails = Accepted(sandbox, "mails");
  for (const auto& row : garage.Rows("results %1", {id})) {
    const int customer = Number(row, "Customer");
    const int text = texts[Text(row, "Mobile")];
    const int mail = mails[Text(row, "Email")];
    if (doubtful.contains(customer)) {
      EXPECT_LE(text, 1) << customer;
      EXPECT_LE(mail, 1) << customer;
      EXPECT_FALSE(Flag(row, "Processed")) << customer;
    } else {
      EXPECT_EQ(text, 1) << customer;
      EXPECT_EQ(mail, 1) << customer;
      EXPECT_TRUE(Flag(row, "Processed")) << customer;
    }
  }
}

/// A garage whose campaign waits to be sent.
struct ReadyGarage {
  explicit ReadyGarage(int customers, const QStringList& sandboxArguments = {})
      : sandbox(sandboxArguments), garage(customers) {
    garage.MakeEverybodyReachable();
    garage.Use(sandbox);
    id = garage.MakeCampaign();
  }
  /// The mobile of the row that is sent as number `place`, from 0.
  [[nodiscard]] QByteArray MobileAt(int place) const {
    const int record = Number(garage.Rows("preview %1 --rows 1000", {id})[place], "RecordID");
    for (const auto& row : garage.Rows("results %1", {id})) {
      if (Number(row, "RecordID") == record) return Text(row, "Mobile").toUtf8();
    }
    ADD_FAILURE() << "no row at " << place;
    return {};
  }

  SandboxProcess sandbox;
  Garage garage;
  QString id;
};

}  // namespace

TEST(MarketingCtlSend, SendsOnlyTheHalfThatFailedUnlessToldToRepeatTheOther) {
  const ReadyGarage ready(8);
  ready.sandbox.Steer("{\"numbers\": {\"" + ready.MobileAt(0) + "\": \"code 33\"}}");
  const CtlResult first = Send(ready.garage, ready.id);
  EXPECT_EQ(first.code, 3);
  EXPECT_EQ(Number(first.Object(), "sms_failed"), 1);
  EXPECT_EQ(Number(first.Object(), "left"), 1);
  EXPECT_EQ(Number(first.Object(), "credits_required"), Number(first.Object(), "credits_in_all"));

  const CtlResult repeated = ready.garage.Run("send %1 --yes --repeat-delivered", {ready.id});
  EXPECT_EQ(Number(repeated.Object(), "delivered_before"), 1);
  EXPECT_EQ(Number(repeated.Object(), "email_sent"), 1);
  ready.sandbox.Steer("{}");
  const CtlResult rest = Send(ready.garage, ready.id);
  EXPECT_EQ(rest.code, 0);
  EXPECT_EQ(Number(rest.Object(), "credits_required"), 1);
  EXPECT_EQ(Number(rest.Object(), "email_sent"), 0);
  const int recorded = Recorded(ready.sandbox);
  EXPECT_EQ(Send(ready.garage, ready.id).code, 0);
  EXPECT_EQ(Recorded(ready.sandbox), recorded);
}

TEST(MarketingCtlSend, StopsAfterAFailedEmailWhenToldTo) {
  const ReadyGarage ready(6);
  ready.sandbox.Steer(R"({"recipients": {"c1001@example.com": "550 No", "c1002@example.com": "550 No"}})");
  const CtlResult stopped = ready.garage.Run("send %1 --yes --stop-on-error", {ready.id});
  EXPECT_EQ(Number(stopped.Object(), "email_failed"), 1) << stopped.err.constData();
  EXPECT_EQ(stopped.code, 4);
  const CtlResult through = Send(ready.garage, ready.id);
  EXPECT_EQ(through.code, 3);
  EXPECT_EQ(Number(through.Object(), "email_failed"), 2);
  EXPECT_EQ(Number(through.Object(), "left"), 2);
}

TEST(MarketingCtlSend, CtrlCPausesAndTheNextSendGoesOn) {
  const ReadyGarage ready(20, {"--delay", "2"});
  ready.sandbox.Steer("{\"numbers\": {\"" + ready.MobileAt(1) + "\": \"slow\"}}");
  const auto run = ready.garage.Start("send %1 --yes", {ready.id});
  WaitForRecords(ready.sandbox, 2, *run);
  kill(static_cast<pid_t>(run->processId()), SIGINT);
  const CtlResult paused = Finish(*run);
  EXPECT_EQ(paused.code, 4) << paused.err.constData();
  const int left = Number(paused.Object(), "left");
  EXPECT_GT(left, 0);
  EXPECT_EQ(Recorded(ready.sandbox), 2 * (20 - left)) << "a row was left half done";
  EXPECT_TRUE(At(paused.Object(), "log").toArray().last().toString().endsWith("Processing has been paused"));

  const CtlResult rest = Send(ready.garage, ready.id);
  EXPECT_EQ(rest.code, 0) << rest.err.constData();
  EXPECT_EQ(Number(rest.Object(), "sms_sent"), left);
  ExpectNobodyToldTwice(ready.sandbox, ready.garage, ready.id);
}

TEST(MarketingCtlSend, ASecondRunOfACampaignIsRefusedWhileTheFirstLives) {
  const ReadyGarage ready(6, {"--delay", "25"});
  ready.sandbox.Steer("{\"numbers\": {\"" + ready.MobileAt(1) + "\": \"slow\"}}");
  const auto first = ready.garage.Start("send %1 --yes", {ready.id});
  WaitForRecords(ready.sandbox, 2, *first);
  const CtlResult second = Send(ready.garage, ready.id);
  EXPECT_EQ(second.code, 1);
  EXPECT_TRUE(second.err.contains("already being sent by Pat")) << second.err.constData();
  EXPECT_EQ(Number(second.Object(), "sms_sent"), 0);
  EXPECT_EQ(At(CampaignLog(ready.garage, ready.id), "results").toArray().size(), 1)
      << "the first run's log was disturbed";
  for (const char* command : {"campaigns delete %1", "results %1 --settle-doubt not-sent --yes"}) {
    const CtlResult refused = ready.garage.Run(command, {ready.id});
    EXPECT_EQ(refused.code, 1) << command;
    EXPECT_TRUE(refused.err.contains("already being sent by Pat")) << command << ": " << refused.err.constData();
  }

  // The claim of a process that is gone is void; what it was sending is in doubt, and settled by a person.
  first->kill();
  (void)Finish(*first);
  const CtlResult third = Send(ready.garage, ready.id);
  EXPECT_EQ(third.code, 3) << third.err.constData();
  EXPECT_EQ(Number(third.Object(), "in_doubt"), 1);
  EXPECT_EQ(Number(third.Object(), "left"), 1);
  const QJsonArray doubt = At(CampaignLog(ready.garage, ready.id), "in_doubt").toArray();
  ASSERT_EQ(doubt.size(), 1);
  EXPECT_EQ(At(ready.garage.Done("log"), "in_doubt").toArray(), doubt);
  const QStringList row = {ready.id, QString("999999,%1").arg(Number(doubt[0], "RecordID"))};
  EXPECT_EQ(ready.garage.Run("results %1 --settle-doubt sent", row).code, 1);
  EXPECT_EQ(ready.garage.Run("results %1 --settle-doubt sent --rows 999999 --yes", row).Error(), "unknown_row");
  const QJsonValue settledRows = ready.garage.Done("results %1 --settle-doubt sent --rows %2 --yes", row);
  EXPECT_EQ(Number(settledRows, "settled"), 1);
  EXPECT_EQ(At(settledRows, "unknown_rows").toArray(), QJsonArray{999999});
  EXPECT_EQ(Number(ready.garage.Done("results %1 --settle-doubt not-sent --yes", row), "settled"), 0);
  const CtlResult settled = Send(ready.garage, ready.id);
  EXPECT_EQ(settled.code, 0);
  EXPECT_EQ(Number(settled.Object(), "in_doubt"), 0);
}

}  // namespace qbx::test
