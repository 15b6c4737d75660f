// One run of a mailshot: what goes out, what is written down, what stops it.

#include "dispatch/next_messages.h"
#include "dispatch/send_refusals.h"
#include "mailshot_fixture.h"

namespace qbx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MailshotTest : public MailshotFixture {};

TEST_F(MailshotTest, SendsBothChannelsAndMarksTheRows) {
  desk.AddRow(102, "07700 900102/home", "");
  desk.AddRow(101, "07700900101", "a@x.test");
  desk.AddRow(103, "", "c@x.test");
  desk.AddRow(104, "07700900104", "", kCampaign + 1);
  AtPoint observer(MailshotPoint::kRowStarted, [](qint64) {});
  const MailshotSummary summary = desk.MakeMailshot(observer).Send(kCampaign, desk.templates);
  EXPECT_EQ(summary.end, MailshotEnd::kFinished);
  EXPECT_THAT(observer.progress, ElementsAre("0/4", "2/4", "3/4", "4/4"));
  EXPECT_EQ(summary.smsSent, 2);
  EXPECT_EQ(summary.emailSent, 2);
  EXPECT_EQ(summary.smsFailed + summary.emailFailed + summary.inDoubt, 0);
  EXPECT_THAT(Reached(sandbox), ElementsAre("07700900101", "07700900102", "a@x.test", "c@x.test"));
  EXPECT_EQ(Texts(sandbox)[0]["message"].toString(), "Hello Mr 101");
  EXPECT_EQ(Mails(sandbox)[1]["subject"].toString(), "Your Ford");
  EXPECT_EQ(Mails(sandbox)[0]["connection"], Mails(sandbox)[1]["connection"]);
  EXPECT_THAT(desk.Processed(), ElementsAre("101", "102", "103"));
  EXPECT_THAT(
      desk.host.Rows("SELECT Customer, Mobile_Number, Message, CASE WHEN MessageID > 0 THEN 1 ELSE 0 END FROM SMS"),
      ElementsAre("101|07700900101|Hello Mr 101|1", "102|07700900102|Hello Mr 102|1"));
  EXPECT_THAT(desk.host.Rows("SELECT AC_Ref, Email_To, Email_Subject, Email_Text FROM Emails"),
              ElementsAre("101|a@x.test|Your Ford|Dear Mr 101", "103|c@x.test|Your Ford|Dear Mr 103"));
  EXPECT_THAT(desk.LogTexts(), ElementsAre("Processing 2 SMS Texts and 2 Emails", "Processing Finished"));
  EXPECT_EQ(desk.host.Ask("SELECT Event FROM _Marketing_Log").ToText(), "Processing SMS and Emails");
  EXPECT_EQ(desk.host.Ask("SELECT count(*) FROM Campaign_Claims").ToInt(), 0);

  EXPECT_EQ(desk.Send().end, MailshotEnd::kNothingLeft);
  EXPECT_TRUE(Told().back().startsWith("No results left to process."));
  EXPECT_EQ(Reached(sandbox).size(), 4);
}

TEST_F(MailshotTest, KnowsWhatToDoWithShortNumbersAndMissingAddresses) {
  desk.AddRow(101, "07700900", "a@x.test");      // the e-mail alone is enough
  desk.AddRow(102, "07700900", "");              // never tried
  desk.AddRow(103, "12345 mobile", "c@x.test");  // tried, and nothing is left of it
  desk.AddRow(104, "07700900104", "");
  desk.host.Run("UPDATE [Campaign Results] SET Send_Email = 1 WHERE Customer = 104");
  desk.host.Run("UPDATE [Campaign Results] SET Contact = ' ' WHERE Customer = 104");
  const MailshotSummary summary = desk.Send();
  EXPECT_THAT(Reached(sandbox), ElementsAre("07700900104", "a@x.test", "c@x.test"));
  EXPECT_EQ(Texts(sandbox)[0]["message"].toString(), "Hello Customer");
  EXPECT_THAT(desk.Processed(), ElementsAre("101"));
  EXPECT_EQ(summary.smsFailed, 2);
  EXPECT_EQ(summary.emailFailed, 1);
  EXPECT_THAT(desk.LogTexts().mid(1), ElementsAre("Email Failed to: 104, ",
                                                  "Failed Reason: No Email Address specified.", "Processing Finished"));
}

TEST_F(MailshotTest, GoesOnAfterFailuresAndAsksBeforeItRepeatsWhatWasDelivered) {
  desk.AddRow(101, "07700900101", "refused@x.test");
  desk.AddRow(102, "07700900933", "b@x.test");
  desk.AddRow(103, "07700900951", "");
  desk.AddRow(104, "07700900104", "");
  desk.AddRow(105, "07700900105", "bounced@x.test");
  sandbox.Steer(R"({"recipients": {"bounced@x.test": "550 No such user"}})");
  MailshotSummary summary = desk.Send();
  EXPECT_EQ(summary.end, MailshotEnd::kFinished);
  EXPECT_EQ(summary.smsFailed, 2);
  EXPECT_EQ(summary.emailFailed, 2);
  EXPECT_EQ(summary.deliveredBefore, 0);
  EXPECT_EQ(*summary.credits, (CreditNeed{.inAll = 5, .toGo = 5}));
  EXPECT_THAT(desk.Processed(), ElementsAre("104"));
  const QStringList journal{"101|1|1", "101|2|2", "102|1|2", "102|2|1", "103|1|2", "104|1|1", "105|1|1", "105|2|2"};
  EXPECT_EQ(Journal(), journal);
  // "Send E-mails only" forgets nothing about the texts.
  sandbox.Steer(R"({"numbers": {"07700900933": "ok", "07700900951": "ok"}, "recipients": {"refused@x.test": "ok"}})");
  aboutDelivered = MessageAnswer::kNo;
  aboutCredits = MessageAnswer::kNo;
  summary = desk.Send();
  EXPECT_EQ(summary.deliveredBefore, 3);
  EXPECT_EQ(*summary.credits, (CreditNeed{.inAll = 5, .sent = 3, .toGo = 2}));
  EXPECT_THAT(Reached(sandbox), ElementsAre("07700900101", "07700900104", "07700900105", "b@x.test", "refused@x.test"));
  // No: what is missing goes, and nothing else.
  aboutCredits = MessageAnswer::kYes;
  EXPECT_EQ(desk.Send().smsSent, 2);
  EXPECT_THAT(desk.Processed(), ElementsAre("101", "102", "103", "104"));
  // Yes: the row goes whole.
  aboutDelivered = MessageAnswer::kYes;
  summary = desk.Send();
  EXPECT_EQ(summary.deliveredBefore, 1);
  EXPECT_EQ(*summary.credits, (CreditNeed{.inAll = 5, .sent = 5, .toGo = 1}));
  EXPECT_THAT(Reached(sandbox), ElementsAre("07700900101", "07700900104", "07700900105", "07700900933", "07700900951",
                                            "07700900105", "b@x.test", "refused@x.test"));
  EXPECT_THAT(Journal().mid(6), ElementsAre("105|1|1", "105|2|2"));
}

TEST_F(MailshotTest, AsksForConsentAgain) {
  struct Case {
    const char* selected;  ///< what the row was selected with: consent, marketing, text and e-mail
    const char* since;     ///< what happened then
    int refusals;          ///< of the text and of the e-mail
  };
  const Case cases[] = {
      {"NULL, 1, NULL, NULL", "", 0},
      {"1, 1, 1, 1", "Consent_Response = 2", 22},
      {"1, 1, 1, 1", "Consent_Response = 0", 33},
      {"NULL, 1, NULL, NULL", "Consent_Response = 1", 0},
      {"2, 0, 0, 0", "", 0},  // chosen on purpose
      {"2, 0, 0, 0", "No_Marketing = 0", 0},
      {"1, 1, 1, 1", "No_Marketing = 1", 44},
      {"1, 1, 1, 1", "Can_Send_SMS = NULL", 0},
      {"1, 1, 1, NULL", "Can_Send_Email = 0", 5},
      {"1, 1, 1, 1", "Can_Send_SMS = NULL; UPDATE _Options SET Using_Vrelo = 1", 50},
      {"1, 1, 0, 0", "Can_Send_Letter = 1; UPDATE _Options SET Using_Vrelo = 1, Only_Send_Comms_When_Opted_In = 1", 0},
      {"1, 1, 0, 0", "Lastname = 'X'; UPDATE _Options SET Using_Vrelo = 1, Only_Send_Comms_When_Opted_In = 1", 33},
      {"NULL, 1, 1, 1", "Lastname = 'X'; UPDATE _Options SET Only_Send_Comms_When_Opted_In = 1", 33},
      {"2, 1, 1, 1", "Lastname = 'X'; DELETE FROM Customers", 11},
  };
  const qint64 record = desk.AddRow(101, "07700900101", "a@x.test");
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.selected) + ": " + c.since);
    desk.host.Run("DELETE FROM Customers; UPDATE _Options SET Using_Vrelo = 0, Only_Send_Comms_When_Opted_In = 0");
    const QStringList selected = QString(c.selected).split(", ");
    desk.host.Run(
        QString(
            "UPDATE [Campaign Results] SET Consent_Response = %1, Marketing = %2, Can_Send_SMS = %3, Can_Send_Email = %4; "
            "INSERT INTO Customers (Customer, Consent_Response, No_Marketing, Can_Send_SMS, Can_Send_Email) SELECT Customer, "
            "Consent_Response, 1 - Marketing, Can_Send_SMS, Can_Send_Email FROM [Campaign Results]")
            .arg(selected[0], selected[1], selected[2], selected[3]));
    if (*c.since != 0) desk.host.Run(QString("UPDATE Customers SET ") + c.since);
    const RowRefusals refusals = SendRefusals(desk.host.connection).OfRow(record).value();
    EXPECT_EQ(static_cast<int>(refusals.sms) * 10 + static_cast<int>(refusals.email), c.refusals);
  }
  desk.AddRow(102, "07700900102", "b@x.test");
  desk.host.Run("UPDATE Customers SET Can_Send_SMS = 0 WHERE Customer = 102");
  for (const MailshotMode mode : {MailshotMode::kDryRun, MailshotMode::kSend}) {
    desk.resultsLog.Clear();
    EXPECT_EQ(desk.Send(mode).leftOut, 2);
    EXPECT_THAT(desk.LogTexts().filter("Left out"),
                ElementsAre("Left out: 101. The customer is no longer in the database.",
                            "Left out: 102. The customer no longer agrees to texts."));
  }
  EXPECT_THAT(Reached(sandbox), ElementsAre("b@x.test"));
  EXPECT_THAT(desk.Processed(), IsEmpty());
}

TEST_F(MailshotTest, PausesAChannelWhoseServerIsAway) {
  for (int customer = 101; customer <= 106; ++customer)
    desk.AddRow(customer, QString("07700900%1").arg(customer), QString("c%1@x.test").arg(customer));
  sandbox.Steer(R"({"numbers": {"07700900101": "http 503", "07700900102": "page", "07700900103": "code 33",
                                "07700900104": "html", "07700900105": "http 502", "07700900106": "http 500"}})");
  EXPECT_EQ(desk.Send().end, MailshotEnd::kPaused);
  EXPECT_THAT(Journal().filter("|1|"), ElementsAre("101|1|2", "102|1|0", "103|1|2", "104|1|0", "105|1|0", "106|1|0"));
  EXPECT_EQ(Reached(sandbox).size(), 6);  // the e-mails
  EXPECT_EQ(desk.LogTexts().filter("are paused").size(), 1);

  for (int customer = 111; customer <= 115; ++customer)
    desk.AddRow(customer, QString("07700900%1").arg(customer), QString("c%1@x.test").arg(customer));
  sandbox.Steer("{}");
  aboutDelivered = MessageAnswer::kNo;
  const QString port = desk.options.SMTP_Port;
  desk.options.SMTP_Port = "1";
  const MailshotSummary summary = desk.Send();
  EXPECT_EQ(summary.end, MailshotEnd::kPaused);
  EXPECT_EQ(summary.smsSent, 7);
  EXPECT_EQ(summary.emailFailed, ServerWatch::kEnough);
  desk.options.SMTP_Port = port;
  EXPECT_EQ(desk.Send().emailSent, 5);
}

TEST_F(MailshotTest, SendsWhatThePreviewShowed) {
  desk.AddRow(102, "07700900102", "b@x.test");
  desk.AddRow(101, "1234567", "a@x.test");
  desk.AddRow(103, "1234567", "");
  desk.templates = {" Hello {contact}\n\u20ac", "{make}\n!", "Dear\n{contact}\n"};
  NextMessages walk(desk.host.statements);
  ASSERT_TRUE(walk.Read(kCampaign, Channel::kSms));
  EXPECT_EQ(walk.Count(), 1);
  ASSERT_TRUE(walk.Read(kCampaign));
  ASSERT_EQ(walk.Count(), 2);
  MessageMaker messages(desk.templates);
  const QDate today = desk.host.clock.Today();
  const NextMessage first = walk.At(0, messages, today).value();
  const NextMessage second = walk.At(1, messages, today).value();
  EXPECT_EQ(desk.Send().emailSent, 2);
  EXPECT_FALSE(first.sms.has_value());
  EXPECT_EQ(Texts(sandbox)[0]["message"].toString(), second.sms);
  EXPECT_EQ(Mails(sandbox)[0]["subject"].toString(), first.subject);
  EXPECT_EQ(Mails(sandbox)[1]["body"].toString(), second.body);
  ASSERT_TRUE(walk.Read(kCampaign));
  EXPECT_EQ(walk.Count(), 0);
}

TEST_F(MailshotTest, WritesNothingInADryRun) {
  desk.AddRow(101, "07700900101", "a@x.test");
  desk.AddRow(102, "1234567890x", "");
  desk.AddRow(103, "07700900933", "");
  EXPECT_EQ(desk.Send().smsFailed, 1);
  desk.host.Run("UPDATE [Campaign Results] SET Processed = 0");
  desk.options.QBX_Internal = true;
  const auto everything = [this] {
    QStringList all;
    for (const QString& table : desk.host.Rows("SELECT name FROM sqlite_master WHERE type = 'table'"))
      all += table + ": " + desk.host.Rows("SELECT * FROM [" + table + "]").join(" / ");
    return all;
  };
  const QStringList before = everything();
  const QStringList reached = Reached(sandbox);
  EXPECT_EQ(desk.Send(MailshotMode::kDryRun).end, MailshotEnd::kRefused);
  desk.options.QBX_Internal = false;
  const MailshotSummary summary = desk.Send(MailshotMode::kDryRun);
  EXPECT_EQ(summary.end, MailshotEnd::kFinished);
  EXPECT_EQ(summary.smsSent, 1);  // of the two other rows it is known that they are out
  EXPECT_EQ(everything(), before);
  EXPECT_EQ(Reached(sandbox), reached);
}

TEST_F(MailshotTest, IsRefusedByItsChecks) {
  desk.AddRow(101, "07700900101", "a@x.test");
  desk.options.QBX_Internal = true;
  EXPECT_EQ(desk.Send().end, MailshotEnd::kRefused);
  EXPECT_EQ(desk.host.Rows("SELECT Event FROM _Marketing_Log").last(), "Not a Manager User");
  EXPECT_THAT(Told(), ElementsAre("Need to be logged on as Manager to perform this function."));
  EXPECT_TRUE(MaySend(desk.options, "Manager"));
  desk.options.QBX_Internal = false;
  desk.templates.sms = " ";
  EXPECT_EQ(desk.Send().end, MailshotEnd::kRefused);
  desk.templates.sms = "Hello";
  desk.options.Reminder_From_Email = " ";
  EXPECT_EQ(desk.Send().end, MailshotEnd::kRefused);
  desk.options.Reminder_From_Email = "office@hill.test";
  desk.options.ReadFailed = true;  // nobody knows who consented
  EXPECT_EQ(desk.Send().end, MailshotEnd::kRefused);
  EXPECT_EQ(Told().size(), 4);
  EXPECT_THAT(Reached(sandbox), IsEmpty());
  EXPECT_EQ(desk.host.Ask("SELECT count(*) FROM Campaign_Claims").ToInt(), 0);
}

TEST_F(MailshotTest, StopsWhenTheBalanceIsUnknownOrTooSmall) {
  desk.AddRow(101, "07700900101", "a@x.test");
  desk.AddRow(102, "07700900102", "");
  struct Case {
    const char* answer;
    const char* told;
    const char* logged;  ///< in the results log
  };
  const Case cases[] = {
      {"empty", "Unable to determine the amount of SMS Text Message credits available", nullptr},
      {"http 500", "An unexpected error occured.", nullptr},
      {"html", "Unable to determine the amount of SMS Text Message credits available", nullptr},
      {R"(reply "1"|"1"|)", "1 available, but require: 2",
       "Processing Stopped - not enough Text Messages available (1)"},
      {"status 0", "There are no Text Message credits remaining",
       "Processing Stopped - no Text Messages available (0)"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.answer);
    sandbox.Steer(QJsonDocument(QJsonObject{{"credit_query", c.answer}}).toJson());
    desk.host.ui.Clear();
    desk.resultsLog.Clear();
    EXPECT_EQ(desk.Send().end, MailshotEnd::kRefused);
    ASSERT_EQ(Told().size(), 1);
    EXPECT_TRUE(Told().front().contains(c.told)) << Told().front().toStdString();
    EXPECT_EQ(desk.LogTexts().mid(1).join('\n'), c.logged);
  }
  EXPECT_THAT(desk.host.Rows("SELECT EventType, TableKey, Details FROM _Log WHERE TableKey = 'SMS-CREDITS'"),
              ElementsAre("7|SMS-CREDITS|SMS Credits Remaining / Rows to Process: 1 / 2",
                          "7|SMS-CREDITS|SMS Credits Remaining / Rows to Process: 0 / 2"));
  aboutCredits = MessageAnswer::kCancel;
  sandbox.Steer("{}");
  EXPECT_EQ(desk.Send().end, MailshotEnd::kRefused);
  EXPECT_THAT(Reached(sandbox), IsEmpty());
}

TEST_F(MailshotTest, StopsWhenTheCreditsRunOutWhileTextsAreLeft) {
  for (int customer = 101; customer <= 104; ++customer)
    desk.AddRow(customer, QString("07700900%1").arg(customer), "");
  sandbox.Steer(R"({"numbers": {"07700900101": "reply \"1\"|\"0\"|\"5\"|\"0\"|"}})");
  EXPECT_EQ(desk.Send().end, MailshotEnd::kOutOfCredits);
  EXPECT_EQ(Texts(sandbox).size(), 1U);
  EXPECT_THAT(desk.Processed(), ElementsAre("101"));
  EXPECT_TRUE(desk.LogTexts().contains("Finished because not enough SMS credits are remaining."));
}

TEST_F(MailshotTest, SendsTheEMailsThatAreLeftWithoutCredits) {
  desk.AddRow(101, "07700900101", "");
  for (int customer = 102; customer <= 105; ++customer)
    desk.AddRow(customer, "", QString("c%1@x.test").arg(customer));
  sandbox.Steer(R"({"numbers": {"07700900101": "reply \"1\"|\"0\"|\"5\"|\"0\"|"}})");
  EXPECT_EQ(desk.Send().end, MailshotEnd::kFinished);
  EXPECT_EQ(desk.Processed().size(), 5);
}

TEST_F(MailshotTest, NeedsNeitherCreditsNorTheGatewayForEMailsAlone) {
  for (int customer = 101; customer <= 104; ++customer)
    desk.AddRow(customer, QString("07700900%1").arg(customer), QString("c%1@x.test").arg(customer));
  const QString port = desk.options.SMTP_Port;
  desk.options.SMTP_Port = "1";
  EXPECT_EQ(desk.Send().smsSent, 4);
  aboutDelivered = MessageAnswer::kYes;
  EXPECT_EQ(desk.Send().smsSent, ServerWatch::kEnough)
      << "what was delivered goes again only while its other half is tried";
  desk.options.SMTP_Port = port;
  desk.options.SMS_Server = "127.0.0.1:1";
  desk.state.SMSCreditsRemaining = 0;
  aboutDelivered = MessageAnswer::kNo;
  EXPECT_EQ(desk.Send().emailSent, 4);
  EXPECT_EQ(desk.Processed().size(), 4);
}

TEST_F(MailshotTest, GoesOnWhenRecordsCannotBeWritten) {
  desk.host.Run("DROP TABLE SMS; DROP TABLE Emails");
  desk.AddRow(101, "07700900101", "a@x.test");
  desk.AddRow(102, "07700900102", "b@x.test");
  EXPECT_EQ(desk.Send().end, MailshotEnd::kFinished);
  EXPECT_THAT(Told(), IsEmpty());
  EXPECT_THAT(desk.Processed(), ElementsAre("101", "102"));
}

TEST_F(MailshotTest, ALostConnectionAndAFailedMarkKeepWhatWentOutAndTheNextRunMarksIt) {
  desk.AddRow(101, "07700900101", "");
  desk.host.Run(
      "CREATE TRIGGER Refuse BEFORE UPDATE OF Processed ON [Campaign Results] BEGIN SELECT RAISE(ABORT, 'not now'); END");
  AtPoint observer(MailshotPoint::kAfterSend, [this](qint64) { desk.host.connection.Close(); });
  EXPECT_EQ(desk.MakeMailshot(observer).Send(kCampaign, desk.templates).inDoubt, 0);
  EXPECT_TRUE(desk.Processed().isEmpty());
  EXPECT_EQ(desk.host.Ask("SELECT count(*) FROM SMS").ToInt(), 1);
  desk.host.Run("DROP TRIGGER Refuse");
  (void)desk.Send();
  EXPECT_THAT(desk.Processed(), ElementsAre("101"));
  EXPECT_THAT(Reached(sandbox), ElementsAre("07700900101"));
}

TEST_F(MailshotTest, GoesOnWhenTheConnectionIsLostWhileAMessageIsWrittenDown) {
  for (const MailshotPoint point :
       {MailshotPoint::kBeforeJournal, MailshotPoint::kAfterSend, MailshotPoint::kBeforeCommit}) {
    const int customer = 101 + static_cast<int>(point);
    desk.AddRow(customer, "07700900101", "a@x.test");
    bool broken = false;
    AtPoint observer(point, [&](qint64) {
      if (!std::exchange(broken, true)) desk.host.server.BreakSessions();
    });
    EXPECT_EQ(desk.MakeMailshot(observer).Send(kCampaign, desk.templates).end, MailshotEnd::kFinished);
    EXPECT_TRUE(desk.Processed().contains(QString::number(customer)));
    EXPECT_EQ(desk.host.Ask(QString("SELECT count(*) FROM SMS WHERE Customer = '%1'").arg(customer)).ToInt(), 1);
  }
  EXPECT_EQ(Reached(sandbox).size(), 6);
  EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(MailshotTest, EndsWithAReportWhenTheJournalCannotBeWritten) {
  desk.AddRow(101, "07700900101", "");
  desk.AddRow(102, "07700900102", "");
  AtPoint observer(MailshotPoint::kRowFinished, [this](qint64) { desk.host.Run("DROP TABLE Send_Journal"); });
  const MailshotSummary summary = desk.MakeMailshot(observer).Send(kCampaign, desk.templates);
  EXPECT_EQ(summary.end, MailshotEnd::kFailed);
  EXPECT_EQ(summary.smsSent, 1);
  EXPECT_THAT(desk.Processed(), ElementsAre("101"));
  EXPECT_THAT(Reached(sandbox), ElementsAre("07700900101"));
  EXPECT_TRUE(desk.host.folder.Read("MARKETING.LOG").contains("(in ProcessSMSandEmail)"));
}

}  // namespace
}  // namespace qbx::test
