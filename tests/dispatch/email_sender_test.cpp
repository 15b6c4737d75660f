// The e-mail sender against a mail server on loopback.

#include <gmock/gmock.h>

#include "dispatch/email_identity.h"
#include "received.h"
#include "sending_desk.h"
#include "support/fakes.h"

namespace qbx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kQuestion[] =
    "QBX could not send email with the current settings. The QBX Mail Server may not be available or your Internet "
    "Provider may "
    "not be allowing email traffic with the current Email Sender/Mail Server settings.\r\rDo you wish to see the error "
    "message "
    "and cancel any other emails which may be queued to send?";
constexpr char kUncleanEnd[] =
    "Email should have been sent but the connection to the SMTP server could not be closed cleanly.";

class EmailSenderTest : public testing::Test {
 protected:
  /// Sends to an address and expects the question that follows a failure.
  EmailResult Fail(const QString& to, MessageAnswer answer = MessageAnswer::kNo) {
    desk.host.ui.Answer(kQuestion, answer);
    EmailResult result = desk.email.SendEmailMessage(to, "Service due", "Dear all");
    EXPECT_FALSE(result.sent);
    EXPECT_FALSE(desk.host.lastError.LastEmailError.isEmpty());
    return result;
  }
  void Send(const QString& to) {
    EXPECT_TRUE(desk.email.SendEmailMessage(to, "Hello", "Dear all").sent) << to.toStdString();
  }
  QString Last(const char* value) { return Mails(sandbox).back()[value].toString(); }
  QByteArray Source(int number) {
    QFile file(sandbox.Folder() + QString("/mails/%1.eml").arg(number, 6, 10, QLatin1Char('0')));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

  SandboxProcess sandbox;
  FakeHostInfo computer;
  SendingDesk desk{sandbox.HttpPort(), sandbox.SmtpPort(), computer};
};

TEST_F(EmailSenderTest, DeliversWordsUnchangedOverEveryKindOfConnection) {
  CurlMailTransport mail(sandbox.AuthorityFile());
  EmailSender sender(mail, desk.mime, desk.options, desk.service, desk.host.connection, desk.host.events, desk.state,
                     desk.host.lastError, desk.view, desk.host.diagnostics);
  const QString subject = QString::fromUtf8("M\u00f6tley & \u201cS\u00f8n\u201d: \u00a35 off \U0001F697");
  const QString body = QString::fromUtf8("Dear \u00c5sa,\n\n.a line with a dot\n..two; \"quoted\" 'text' = 50%\n") +
                       QString(1200, u'x') + "\n";
  desk.service.implicitTlsPort = sandbox.SmtpsPort();
  struct Case {
    bool tls;
    int port;
    const char* seen;
  };
  for (const Case& c : {Case{false, sandbox.SmtpPort(), ""},
                        {true, sandbox.SmtpPort(), "starttls"},
                        {true, sandbox.SmtpsPort(), "implicit"}}) {
    desk.options.SMTP_UseSSL = c.tls;
    desk.options.SMTP_Port = QString::number(c.port);
    EXPECT_TRUE(sender.SendEmailMessage("asa@x.test", subject, body).sent);
    EXPECT_EQ(Last("tls"), c.seen);
    EXPECT_EQ(Last("user"), "garage");
    EXPECT_EQ(Last("from"), "office@hill.test");
    EXPECT_EQ(Last("subject"), subject);
    EXPECT_EQ(Last("body"), body);
  }
  QByteArray source = Source(1);
  source.prepend("\r\n").replace("\"", "");
  for (const char* header :
       {"\r\nFrom: Hill Garage <office@hill.test>\r\n", "\r\nReply-To: office@hill.test\r\n", "\r\nX-Priority: 3\r\n"})
    EXPECT_TRUE(source.contains(header)) << header;
  EXPECT_THAT(desk.view.shown.mid(0, 3), ElementsAre("open", "Sending Email...", "close"));
}

TEST_F(EmailSenderTest, ReachesEveryRecipientAndTheBlindCopy) {
  desk.options.Email_Send_BCC = true;
  desk.options.Email_Send_BCC_Address = " archive@hill.test ";
  EXPECT_TRUE(desk.email.SendEmailMessage("a@x.test; ; b@x.test;", "Hello", "Dear all").sent);
  EXPECT_EQ(Recipients(Mails(sandbox).back()), "a@x.test b@x.test archive@hill.test");
  EXPECT_FALSE(Source(1).contains("archive"));
  EXPECT_EQ(IdentityText(MakeEmailIdentity(desk.options)),
            "From Hill Garage <office@hill.test>, a copy of each to <archive@hill.test>.");
  // A copy that is refused does not keep the customer's mail; a customer who is refused is.
  for (const char* copy : {"refused@hill.test", "no<address"}) {
    desk.options.Email_Send_BCC_Address = copy;
    const EmailResult result = desk.email.SendEmailMessage("a@x.test", "Hello", "Dear all");
    EXPECT_TRUE(result.sent);
    EXPECT_TRUE(result.copyRefused.contains(copy));
    EXPECT_EQ(Recipients(Mails(sandbox).back()), "a@x.test");
  }
  Fail("refused@x.test");
  desk.options.Email_Send_BCC = false;
  Send("a@x.test");
  EXPECT_EQ(Recipients(Mails(sandbox).back()), "a@x.test");
}

TEST_F(EmailSenderTest, ChoosesTheSender) {
  struct Case {
    const char* setting;
    const char* address;
    const char* shown;
  };
  for (const Case& c : {Case{"", "office@hill.test", "Hill Garage <office@hill.test>"},
                        {"post@hill.test", "office@hill.test", "Hill Garage <office@hill.test>"},
                        {"\"The Hill\" <post@hill.test>", "post@hill.test", "The Hill <post@hill.test>"}}) {
    desk.options.SMTP_FromEmail = c.setting;
    Send("a@x.test");
    EXPECT_EQ(Last("from"), c.address);
    EXPECT_EQ(Last("sender").remove('"'), c.shown);
  }
}

TEST_F(EmailSenderTest, UsesTheBuiltInAccountOfTheQbxServerWhereNoneIsSet) {
  desk.service.mailHost = "127.0.0.1";
  desk.service.mailAccount = "qbx-account";
  desk.service.mailPassword = "built-in";
  desk.options.SMTP_Server = " 127.0.0.1";
  desk.options.SMTP_UserName = " ";
  desk.options.SMTP_Password.clear();
  Send("a@x.test");
  EXPECT_EQ(Last("user"), "qbx-account");
  EXPECT_THAT(desk.view.shown,
              ElementsAre("open qbx", "Sending via the QBX Email Server in 2 secs...",
                          "Sending via the QBX Email Server in 1 secs...", "Sending Email...", "close"));
  EXPECT_EQ(desk.host.ui.PausedFor(), 3250);
  desk.options.SMTP_UserName = "own";
  Send("a@x.test");
  EXPECT_EQ(Last("user"), "own");
}

TEST_F(EmailSenderTest, FailsWithoutAnAddress) {
  EXPECT_FALSE(desk.email.SendEmailMessage("", "Hello", "Dear all").sent);
  EXPECT_EQ(desk.host.lastError.LastEmailError, "No Email Address specified.");
  EXPECT_THAT(desk.view.shown, IsEmpty());
  Fail(" ; ");
  EXPECT_EQ(desk.host.lastError.LastEmailError, "No Email Address specified.");
}

TEST_F(EmailSenderTest, ReportsAFailureAndCancelsTheRestWhenToldTo) {
  desk.options.SMTP_Password = "wrong";
  Fail("a@x.test");
  EXPECT_FALSE(desk.state.StopSending);
  EXPECT_EQ(desk.view.shown.back(), "close");
  const QString error = desk.host.lastError.LastEmailError;
  EXPECT_TRUE(error.startsWith("The mail server 127.0.0.1 did not accept the user name or the password"))
      << error.toStdString();
  EXPECT_THAT(desk.host.Rows("SELECT EventType, TableID, TableKey, Details FROM _Log"),
              ElementsAre("6|0|SendEmail|" + error.left(80)));
  Fail("a@x.test", MessageAnswer::kYes);
  EXPECT_TRUE(desk.state.StopSending);
  EXPECT_EQ(desk.view.shown.back(), "failure: " + error);
  const QByteArray log = desk.host.folder.Read("MARKETING.LOG");
  EXPECT_EQ(log.count("SendEmail Failed: "), 2);
  EXPECT_FALSE(log.contains("wrong"));
}

TEST_F(EmailSenderTest, KeepsTheComponentsNameToItself) {
  sandbox.Steer(R"({"recipients": {"x@x.test": "550 chilKAT says no"}})");
  Fail("x@x.test");
  const QString error = desk.host.lastError.LastEmailError;
  EXPECT_TRUE(error.contains("says no") && !error.contains("chilkat", Qt::CaseInsensitive)) << error.toStdString();
}

TEST_F(EmailSenderTest, LetsNoLineBreakIntoTheHeaders) {
  desk.options.Reminder_From_Name = "Hill\r\nBcc: spy@x.test";
  EXPECT_TRUE(desk.email.SendEmailMessage("a@x.test", "Hello\r\nBcc: spy@x.test", "Dear all").sent);
  EXPECT_EQ(Recipients(Mails(sandbox).back()), "a@x.test");
  EXPECT_FALSE(Source(1).contains("\nBcc"));
  EXPECT_EQ(Last("subject"), "Hello  Bcc: spy@x.test");
  for (const char* address : {"a@x.test\r\nBcc: spy@x.test", "a@x.test\n", "b@x.test; a@x\r.test"})
    Fail(address);
  desk.options.Reminder_From_Email = "office@hill.test\r\nBcc: spy@x.test";
  Fail("a@x.test");
  EXPECT_EQ(Mails(sandbox).size(), 1U);
}

TEST_F(EmailSenderTest, TakesAnUncleanEndForAFailureOfASingleMessageOnly) {
  for (const char* to : {"quit421@x.test", "quitdrop@x.test"}) {
    EXPECT_FALSE(Fail(to).uncertain);
    EXPECT_EQ(desk.host.lastError.LastEmailError, kUncleanEnd);
    desk.email.BeginRun();
    Send(to);
    desk.email.EndRun();
  }
  EXPECT_EQ(desk.host.folder.Read("MARKETING.LOG").count(QByteArray("SendEmail: ") + kUncleanEnd), 2);
}

TEST_F(EmailSenderTest, KeepsTheConnectionAndAsksOnceForEachKindOfFailureInARun) {
  const auto failQuietly = [this](const char* to) {
    EXPECT_FALSE(desk.email.SendEmailMessage(to, "Hello", "Dear all").sent);
  };
  desk.email.BeginRun();
  Send("a@x.test");
  Send("b@x.test");
  EXPECT_EQ(Mails(sandbox).front()["connection"], Mails(sandbox).back()["connection"]);
  failQuietly("a@x.test\n");  // the row's own fault
  Fail("refused@x.test");
  failQuietly("refused@x.test");
  Fail("drop@x.test");
  failQuietly("drop@x.test");
  desk.email.EndRun();
  EXPECT_EQ(desk.host.folder.Read("MARKETING.LOG").count("SendEmail Failed: "), 5);
}

TEST_F(EmailSenderTest, CutsWhatTheHistoryCannotHold) {
  desk.email.RecordEmail(QString(20, u'1'), QString(90, u'a'), QString(70, u's'), QString(9000, u'b'));
  EXPECT_THAT(
      desk.host.Rows(
          "SELECT len(AC_Ref), AC_Type, len(Email_To), len(Email_Subject), len(Email_Text), Attachments FROM Emails"),
      ElementsAre("15|1|80|60|9000|"));
}

}  // namespace
}  // namespace qbx::test
