// The gateway client against a gateway on loopback.

#include <gmock/gmock.h>

#include "dispatch/sms_reply.h"
#include "received.h"
#include "sending_desk.h"
#include "support/fakes.h"

namespace qbx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SmsGatewayTest : public testing::Test {
 protected:
  /// No secret may stand where people look.
  void ExpectNoSecrets() {
    desk.host.log.WriteLog("end");
    const QStringList shown = desk.host.ui.MessageTexts() + desk.resultsLog.Lines() +
                              desk.host.Rows("SELECT TableKey, Details FROM _Log") +
                              QStringList(QString::fromUtf8(desk.host.folder.Read("MARKETING.LOG")));
    for (const QString& text : shown) {
      EXPECT_FALSE(text.contains(QString::fromUtf8(kSmsPassword))) << text.toStdString();
      EXPECT_FALSE(text.contains("gate%26p")) << text.toStdString();
    }
  }

  SandboxProcess sandbox{{"--client", "GARAGE1", "--password", QString::fromUtf8(kSmsPassword), "--credits", "500"}};
  FakeHostInfo computer;
  SendingDesk desk{sandbox.HttpPort(), sandbox.SmtpPort(), computer};
};

TEST_F(SmsGatewayTest, MakesAPlainAddressOfTheSetting) {
  const std::pair<const char*, const char*> cases[] = {{"sms.test", "http://sms.test/"},
                                                       {" HTTPS://sms.test/ ", "http://sms.test/"},
                                                       {"http://sms.test:81/a", "http://sms.test:81/a/"},
                                                       {"  ", ""}};
  for (const auto& [setting, address] : cases) {
    desk.options.SMS_Server = setting;
    EXPECT_EQ(desk.gateway.SMSGatewayURL(), address);
  }
}

TEST_F(SmsGatewayTest, TellsAcceptedRefusedAndUncertainApart) {
  enum Outcome { kAccepted, kRefused, kUncertain };
  struct Case {
    const char* number;
    Outcome outcome;
    int recordedId;  ///< -1: not in the record of texts; 1: the gateway's number, whatever it is
    int code = 0;    ///< of a refusal
  };
  const Case cases[] = {
      {"07700900123", kAccepted, 1},    {"07700900900", kRefused, 0, 1000}, {"07700900902", kRefused, 0, 2},
      {"07700900903", kRefused, 0, 3},  {"07700900912", kRefused, 0, 1002}, {"07700900922", kRefused, 0, 22},
      {"07700900931", kRefused, 0, 31}, {"07700900933", kRefused, 0, 33},   {"07700900977", kRefused, 0, 77},
      {"07700900971", kUncertain, -1},  {"07700900972", kUncertain, -1},    {"07700900940", kAccepted, 0},
      {"07700900941", kAccepted, 0},    {"07700900942", kAccepted, 0},      {"07700900943", kAccepted, 1},
      {"07700900970", kAccepted, 0},    {"07700900960", kAccepted, 1},      {"07700900950", kUncertain, -1},
      {"07700900951", kRefused, -1},    {"07700900952", kRefused, -1},      {"07700900961", kUncertain, -1},
      {"07700900962", kUncertain, -1},  {"07700900963", kUncertain, -1}};
  sandbox.Steer(R"({"delay": 0})");
  for (const Case& c : cases) {
    SCOPED_TRACE(c.number);
    desk.host.Run("DELETE FROM _Log; DELETE FROM SMS");
    desk.resultsLog.Clear();
    desk.host.ui.Clear();
    const SmsResult result = desk.gateway.SendSMS("101", c.number, "Hello");
    EXPECT_EQ(result.accepted, c.outcome == kAccepted);
    EXPECT_EQ(result.uncertain, c.outcome == kUncertain);
    EXPECT_EQ(result.answered, c.recordedId >= 0);
    EXPECT_EQ(result.messageId > 0, c.recordedId > 0);
    const bool transportFailed = c.recordedId < 0;
    EXPECT_EQ(desk.host.ui.Messages().size(), transportFailed ? 1U : 0U);
    if (!transportFailed) {
      const QString events = desk.host.Rows("SELECT EventType, TableID, TableKey, Details FROM _Log").join('\n');
      EXPECT_EQ(events, c.code ? QString("6|7|%1|SENDSMS: Reminder Error").arg(c.code) : QString());
    }
    QStringList lines;
    if (c.code) {
      lines += QString("SMS Failed to: 101, %1").arg(c.number);
      lines += QString("Failed Reason: ") + SendRefusalReason(c.code, c.number);
    }
    EXPECT_EQ(desk.LogTexts(), lines);
  }
  EXPECT_EQ(Texts(sandbox).size(), std::size(cases));  // none was sent twice
  ExpectNoSecrets();
}

TEST_F(SmsGatewayTest, SendsWordsAndAccountUnchanged) {
  const QString text = QString::fromUtf8("Caf\u00e9 & 50% off: \u00a35!\r\nOr \u20ac6 = \"fair\" + 'free'");
  EXPECT_TRUE(desk.gateway.SendSMS("101", "07700900123", text).accepted);
  ASSERT_EQ(Texts(sandbox).size(), 1U);
  const QJsonObject sent = Texts(sandbox).front();
  EXPECT_EQ(sent["message"].toString(), text);
  EXPECT_EQ(sent["from"].toString(), "Hill Garage");
  EXPECT_EQ(sent["client"].toString(), "GARAGE1");
  EXPECT_EQ(desk.state.SMSCreditsRemaining, 499);
}

TEST_F(SmsGatewayTest, SendsTestTexts) {
  const auto test = [this](const char* number) {
    return desk.gateway.SendTestSMS("Sender", "GARAGE1", QString::fromUtf8(kSmsPassword), number, QString(1000, u'x'));
  };
  EXPECT_TRUE(test("07700900123"));
  EXPECT_EQ(Texts(sandbox).front()["message"].toString().size(), 918);
  EXPECT_FALSE(test("07700900941"));  // no number came back
  EXPECT_THAT(desk.host.ui.MessageTexts(), IsEmpty());
  EXPECT_FALSE(test("07700900933"));
  EXPECT_THAT(
      desk.host.ui.MessageTexts(),
      ElementsAre("SMS Provider reported Insufficient Credits.\r\rIf you are unsure about this message,\rplease "
                  "contact QBX on 01234 567890 to report this."));
  EXPECT_THAT(desk.host.Rows("SELECT EventType, TableID, TableKey, Details FROM _Log"),
              ElementsAre("7|0|0|Test SMS Sent", "6|7|33|Send Test SMS Error"));
  EXPECT_EQ(desk.host.Ask("SELECT count(*) FROM SMS").ToInt(), 0);
  EXPECT_EQ(desk.state.SMSCreditsRemaining, 0);
  ExpectNoSecrets();
}

TEST_F(SmsGatewayTest, AsksForTheBalance) {
  struct Case {
    const char* answer;
    double balance;
    double kept;  ///< in the dispatch state, which starts at 7
    bool error;
  };
  const Case cases[] = {
      {"ok", 500, 500, false},
      {"status 0", 0, 7, false},
      {"reply \"1\"", -999, 7, false},
      {"empty", -999, 7, false},
      {"http 500", -999, 7, true},
      {"broken off", -999, 7, true},
      {R"(reply "1"|"2.5"|)", 2.5, 2.5, false},
      {"html", -999, 7, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.answer);
    sandbox.Steer(QJsonDocument(QJsonObject{{"credit_query", c.answer}}).toJson());
    desk.state.SMSCreditsRemaining = 7;
    const SmsGateway::Credits credits = desk.gateway.GetSMSCredits();
    EXPECT_EQ(credits.balance, c.balance);
    EXPECT_EQ(!credits.error.isEmpty(), c.error);
    EXPECT_EQ(desk.state.SMSCreditsRemaining, c.kept);
  }
}

TEST_F(SmsGatewayTest, ShowsOneTransportFailureARunAndLogsAll) {
  const auto fail = [this](int customer) {
    EXPECT_FALSE(desk.gateway.SendSMS(QString::number(customer), "07700900950", "Hello").accepted);
  };
  for (int run = 1; run <= 2; ++run) {
    desk.gateway.BeginRun();
    for (int customer = 101; customer <= 103; ++customer)
      fail(customer);
    desk.gateway.EndRun();
    EXPECT_EQ(desk.host.ui.Messages().size(), static_cast<std::size_t>(run));
  }
  EXPECT_EQ(desk.host.folder.Read("MARKETING.LOG").count("(in MSend)"), 6);
  EXPECT_EQ(desk.LogTexts().filter("SMS Failed to: 10").size(), 6);
  fail(104);
  fail(105);
  EXPECT_EQ(desk.host.ui.Messages().size(), 4U);
  ExpectNoSecrets();
}

}  // namespace
}  // namespace qbx::test
