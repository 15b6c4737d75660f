// Starting a mailshot again: after texts were skipped, with rows in doubt, beside another run.

#include "dispatch/replace_guard.h"
#include "mailshot_fixture.h"

namespace qbx::test {
namespace {

using testing::ElementsAre;

class MailshotResumeTest : public MailshotFixture {};

TEST_F(MailshotResumeTest, SendsOnlyTheTextOfARowWhoseEMailWentAlone) {
  desk.AddRow(101, "07700900101", "a@x.test");
  desk.AddRow(102, "07700900102", "");
  desk.AddRow(103, "", "c@x.test");
  desk.AddRow(104, "07700900104", "refused@x.test");
  aboutCredits = MessageAnswer::kNo;
  EXPECT_EQ(desk.Send().end, MailshotEnd::kFinished);
  EXPECT_THAT(Reached(sandbox), ElementsAre("a@x.test", "c@x.test"));
  EXPECT_THAT(desk.Processed(), ElementsAre("103"));
  aboutCredits = MessageAnswer::kYes;
  sandbox.Steer(R"({"recipients": {"refused@x.test": "ok"}})");
  EXPECT_EQ(desk.Send().end, MailshotEnd::kFinished);
  EXPECT_THAT(Reached(sandbox),
              ElementsAre("07700900101", "07700900102", "07700900104", "a@x.test", "c@x.test", "refused@x.test"));
  EXPECT_EQ(desk.Processed().size(), 4);
}

TEST_F(MailshotResumeTest, LeavesRowsInDoubtToAPerson) {
  const qint64 text = desk.AddRow(101, "07700900962", "a@x.test");
  const qint64 mail = desk.AddRow(102, "07700900102", "dropdata@x.test");
  desk.AddRow(103, "07700900103", "");
  EXPECT_EQ(desk.Send().inDoubt, 2);
  EXPECT_THAT(Journal(), ElementsAre("101|1|0", "101|2|1", "102|1|1", "102|2|0", "103|1|1"));
  EXPECT_THAT(desk.Processed(), ElementsAre("103"));
  const QStringList reached = Reached(sandbox);
  EXPECT_EQ(desk.Send().inDoubt, 2);
  EXPECT_EQ(Reached(sandbox), reached);
  EXPECT_EQ(desk.LogTexts().filter("2 row(s) are in doubt and were left alone").size(), 2);
  // Ticked: taken for sent. Ticked and unticked: due whole.
  ToggleProcessed(text);
  ToggleProcessed(mail);
  EXPECT_EQ(desk.Send().end, MailshotEnd::kNothingLeft);
  ToggleProcessed(mail);
  sandbox.Steer(R"({"recipients": {"dropdata@x.test": "ok"}})");
  const MailshotSummary summary = desk.Send();
  EXPECT_EQ(summary.inDoubt, 0);
  EXPECT_EQ(Reached(sandbox).size(), reached.size() + 2);
  EXPECT_EQ(desk.Processed().size(), 3);
}

TEST_F(MailshotResumeTest, CountsADoubtfulEMailOfARowWhoseTextIsSkipped) {
  desk.AddRow(101, "07700900101", "dropdata@x.test");
  aboutCredits = MessageAnswer::kNo;
  EXPECT_EQ(desk.Send().inDoubt, 1);
}

class MailshotClaimTest : public MailshotFixture {
 protected:
  /// Lets another run claim the campaign, seen `minutes` ago.
  void Claim(const QString& onComputer, int process, int start, int minutes) {
    const QString seen = desk.host.clock.Now().toUTC().addSecs(qint64{-60} * minutes).toString("yyyy-MM-dd HH:mm:ss");
    desk.host.Run(
        QString(
            "DELETE FROM Campaign_Claims; INSERT INTO Campaign_Claims VALUES (%1, 'ANNE', '%2', %3, '%4', '%5', '%5')")
            .arg(kCampaign)
            .arg(onComputer)
            .arg(process)
            .arg(start)
            .arg(seen));
  }
};

TEST_F(MailshotClaimTest, RefusesASecondRunWhileTheFirstLives) {
  desk.AddRow(101, "07700900101", "");
  computer.processes[99] = 5;
  struct Case {
    const char* computer;
    int process;
    int start;
    int minutes;
    bool lives;
  };
  const Case cases[] = {
      {"WORKSHOP-PC", 99, 5, 500, true},  // this computer: the process counts, not the time
      {"workshop-pc", 99, 5, 0, true},       {"WORKSHOP-PC", 99, 6, 0, false},  // the number was given out again
      {"WORKSHOP-PC", 4711, 1000, 0, false},                                    // this process could not give it back
      {"WORKSHOP-PC", 98, 5, 0, false},                                         // gone
      {"OFFICE-PC", 1, 1, 14, true},         {"OFFICE-PC", 1, 1, 15, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.computer);
    desk.host.ui.Clear();
    desk.host.Run("UPDATE [Campaign Results] SET Processed = 0; DELETE FROM Send_Journal");
    Claim(c.computer, c.process, c.start, c.minutes);
    EXPECT_EQ(desk.Send(MailshotMode::kDryRun).end == MailshotEnd::kRefused, c.lives);
    EXPECT_EQ(desk.Send().end == MailshotEnd::kRefused, c.lives);
    ASSERT_EQ(Told().size(), c.lives ? 2 : 0);
    if (c.lives) {
      EXPECT_EQ(Told().front(),
                QString("This campaign is already being sent by ANNE on computer %1 (process %2).\r\rPlease "
                        "wait until that run has finished or was paused.")
                    .arg(c.computer)
                    .arg(c.process));
    }
    EXPECT_EQ(desk.host.Ask("SELECT count(*) FROM Campaign_Claims").ToInt(), c.lives ? 1 : 0);
  }
  EXPECT_EQ(Texts(sandbox).size(), 4U);
}

TEST_F(MailshotClaimTest, GuardsTheRowsFromBeingReplaced) {
  desk.AddRow(101, "07700900101", "");
  ReplaceGuard guard(desk.host.connection, computer, desk.host.diagnostics);
  EXPECT_FALSE(guard.Look(kCampaign).refusal);
  EXPECT_FALSE(guard.Look(kCampaign).messagesOnRecord);
  desk.host.Run("INSERT INTO Send_Journal (RecordID, Channel, State, CampaignID, Changed) VALUES (99, 3, 1, 13, '')");
  EXPECT_TRUE(guard.Look(kCampaign + 1).messagesOnRecord) << "a letter that went out";
  Claim("OFFICE-PC", 1, 1, 0);
  EXPECT_TRUE(guard.Look(kCampaign).refusal.value().text.startsWith("This campaign is already being sent by ANNE"));
  EXPECT_FALSE(guard.Look(kCampaign + 1).refusal);
  Claim("OFFICE-PC", 1, 1, 20);
  EXPECT_EQ(desk.Send().end, MailshotEnd::kFinished);
  EXPECT_TRUE(guard.Look(kCampaign).messagesOnRecord);
  desk.host.Run("DROP TABLE Send_Journal");
  EXPECT_TRUE(guard.Look(kCampaign).refusal.value().text.contains("so nothing was changed"));
  EXPECT_FALSE(guard.LookAtClaim(kCampaign)) << "the claim alone needs no journal";
}

TEST_F(MailshotClaimTest, HoldsTheCampaignWhileItRunsAndSaysThatItLives) {
  desk.AddRow(101, "07700900101", "");
  desk.AddRow(102, "07700900102", "");
  QStringList claims;
  AtPoint observer(MailshotPoint::kRowStarted, [&](qint64) {
    claims += desk.host.Rows(
        "SELECT UserID, Computer, ProcessID, strftime('%s', GetUtcDate()) - strftime('%s', LastSeen) FROM Campaign_Claims");
    desk.host.clock.AdvanceSeconds(61);
  });
  EXPECT_EQ(desk.MakeMailshot(observer).Send(kCampaign, desk.templates).end, MailshotEnd::kFinished);
  EXPECT_THAT(claims, ElementsAre("TESTER|WORKSHOP-PC|4711|0", "TESTER|WORKSHOP-PC|4711|0"));
}

}  // namespace
}  // namespace qbx::test
