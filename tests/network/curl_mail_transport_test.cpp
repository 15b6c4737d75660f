// The mail transport against the sandbox's mail server.

#include "network/curl_mail_transport.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "support/sandbox_process.h"

namespace qbx {
namespace {

using test::SandboxProcess;

class MailToSandbox : public testing::Test {
 protected:
  [[nodiscard]] MailServer Plain() const { return {.host = QStringLiteral("127.0.0.1"), .port = sandbox_.SmtpPort()}; }
  [[nodiscard]] MailServer StartTls() const {
    return {QStringLiteral("localhost"), sandbox_.SmtpPort(),          true, false,
            QStringLiteral("garage"),    QStringLiteral("pa\"ss wörd")};
  }
  [[nodiscard]] MailServer ImplicitTls() const {
    return {QStringLiteral("127.0.0.1"), sandbox_.SmtpsPort(),    true, true,
            QStringLiteral("garage"),    QStringLiteral("secret")};
  }
  [[nodiscard]] MailResult Send(const MailServer& server, const QString& mailbox) {
    return transport_.Send(server,
                           {QStringLiteral("garage@example.org"),
                            {mailbox + QLatin1String("@example.org")},
                            "Subject: x\r\n\r\nHello\r\n"},
                           {});
  }
  [[nodiscard]] QJsonArray Mails() const {
    return QJsonDocument::fromJson(sandbox_.Ask(QStringLiteral("/api/mails"))).array();
  }

  SandboxProcess sandbox_;
  CurlMailTransport transport_{sandbox_.AuthorityFile()};
};

TEST_F(MailToSandbox, KeepsOneConnectionToAServer) {
  for (const MailServer& server : {Plain(), StartTls(), ImplicitTls()}) {
    for (int message = 0; message < 3; ++message) {
      const MailResult result = Send(server, QStringLiteral("ann"));
      EXPECT_EQ(result.outcome, MailOutcome::kSent) << result.error.toStdString();
      EXPECT_EQ(result.error, QString());
    }
  }
  EXPECT_TRUE(transport_.Close());
  EXPECT_TRUE(transport_.Close());
  const QJsonArray mails = Mails();
  ASSERT_EQ(mails.size(), 9);
  const QStringList tls = {QString(), QStringLiteral("starttls"), QStringLiteral("implicit")};
  for (int index = 0; index < 9; ++index) {
    const QJsonObject mail = mails[index].toObject();
    EXPECT_EQ(mail[QLatin1String("connection")].toInt(), index / 3 + 1);
    EXPECT_EQ(mail[QLatin1String("message")].toInt(), index % 3 + 1);
    EXPECT_EQ(mail[QLatin1String("tls")].toString(), tls[index / 3]);
    EXPECT_EQ(mail[QLatin1String("user")].toString(), index < 3 ? QString() : QStringLiteral("garage"));
  }
}

TEST_F(MailToSandbox, CarriesTheMessageAsItIs) {
  const QByteArray body =
      ".\r\n..two\r\n.start\r\nmid . dle\r\n" + QByteArray(200000, 'x').replace("xxxxxxxx", "xxxxxx\r\n") + ".\r\n";
  QList<int> percentages;
  const MailResult result = transport_.Send(Plain(),
                                            {QStringLiteral("garage@example.org"),
                                             {QStringLiteral(" ann@example.org"), QStringLiteral("blind@example.org")},
                                             "Subject: x\r\n\r\n" + body},
                                            [&](int percent) { percentages.append(percent); });
  ASSERT_EQ(result.outcome, MailOutcome::kSent) << result.error.toStdString();
  EXPECT_EQ(percentages.first(), 0);
  EXPECT_EQ(percentages.last(), 100);
  const QJsonObject mail = QJsonDocument::fromJson(sandbox_.Ask(QStringLiteral("/api/mails/1"))).object();
  EXPECT_TRUE(mail[QLatin1String("raw")].toString() == QString::fromLatin1("Subject: x\r\n\r\n" + body));
  EXPECT_EQ(mail[QLatin1String("to")].toArray(),
            (QJsonArray{QStringLiteral("ann@example.org"), QStringLiteral("blind@example.org")}));
}

TEST_F(MailToSandbox, TellsRefusalsFromBrokenConnections) {
  struct Case {
    const char* mailbox;
    MailOutcome outcome;
    bool transport;
    const char* part;
  };
  const Case cases[] = {
      {"refused", MailOutcome::kRefused, false,
       "refused the recipient refused@example.org: 550 5.1.1 No such user here"},
      {"tempfail", MailOutcome::kRefused, false, "451 4.3.0 Try again later"},
      {"nodata", MailOutcome::kRefused, false, "refused the message: 554 5.6.0 Message refused"},
      {"ann", MailOutcome::kSent, false, ""},
      {"drop", MailOutcome::kRefused, true, "broke off"},
      {"ann", MailOutcome::kSent, false, ""},
      {"dropdata", MailOutcome::kUncertain, true, "did not confirm"},
      {"ann", MailOutcome::kSent, false, ""},
  };
  for (const Case& c : cases) {
    const MailResult result = Send(Plain(), QString::fromLatin1(c.mailbox));
    EXPECT_EQ(result.outcome, c.outcome) << c.mailbox << ": " << result.error.toStdString();
    EXPECT_EQ(result.transport, c.transport) << c.mailbox << ": " << result.error.toStdString();
    EXPECT_TRUE(result.error.contains(QLatin1String(c.part))) << result.error.toStdString();
  }
  // Every one of several recipients has to be accepted.
  const MailResult partly = transport_.Send(Plain(),
                                            {QStringLiteral("garage@example.org"),
                                             {QStringLiteral("ann@example.org"), QStringLiteral("refused@example.org")},
                                             "x\r\n"},
                                            {});
  EXPECT_EQ(partly.outcome, MailOutcome::kRefused);
}

TEST_F(MailToSandbox, TrustsNoCertificateWithoutItsAuthority) {
  CurlMailTransport trusting;
  for (const MailServer& server : {StartTls(), ImplicitTls()}) {
    const MailResult result =
        trusting.Send(server, {QStringLiteral("a@b.c"), {QStringLiteral("ann@example.org")}, "x\r\n"}, {});
    EXPECT_EQ(result.outcome, MailOutcome::kRefused);
    EXPECT_TRUE(result.transport);
    EXPECT_TRUE(result.error.contains(QLatin1String("No secure connection"))) << result.error.toStdString();
  }
  EXPECT_EQ(Mails().size(), 0);
}

TEST_F(MailToSandbox, TellsThatTheLogInFailed) {
  MailServer server = StartTls();
  server.password = QStringLiteral("wrong");
  const MailResult result = Send(server, QStringLiteral("ann"));
  EXPECT_EQ(result.outcome, MailOutcome::kRefused);
  EXPECT_TRUE(result.transport);
  EXPECT_TRUE(result.error.contains(QLatin1String("did not accept the user name or the password: 535")))
      << result.error.toStdString();
  EXPECT_FALSE(result.error.contains(QLatin1String("wrong")));
}

TEST_F(MailToSandbox, TellsWhetherTheServerTookItsLeave) {
  for (const char* mailbox : {"quit421", "quitdrop"}) {
    EXPECT_EQ(Send(StartTls(), QString::fromLatin1(mailbox)).outcome, MailOutcome::kSent);
    EXPECT_FALSE(transport_.Close()) << mailbox;
    EXPECT_TRUE(transport_.Close()) << mailbox;
  }
  EXPECT_EQ(Send(StartTls(), QStringLiteral("ann")).outcome, MailOutcome::kSent);
  EXPECT_TRUE(transport_.Close());
}

TEST_F(MailToSandbox, RefusesAddressesThatSmuggleCommands) {
  for (const char* address :
       {"", " ", "ann@example.org\r\nRCPT TO:<bob@example.org>", "ann@example.org> SIZE=1", "<ann@example.org>"}) {
    const MailResult result =
        transport_.Send(Plain(), {QStringLiteral("garage@example.org"), {QString::fromLatin1(address)}, "x\r\n"}, {});
    EXPECT_EQ(result.outcome, MailOutcome::kRefused) << address;
    EXPECT_FALSE(result.transport) << address;
  }
  EXPECT_TRUE(transport_.Send({.host = QStringLiteral("a/b")}, {}, {}).transport);
  EXPECT_EQ(Mails().size(), 0);
}

}  // namespace
}  // namespace qbx
