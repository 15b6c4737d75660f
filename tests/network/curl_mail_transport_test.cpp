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
  [[nodiscard]] MailServer Plain() const { return {.host = "127.0.0.1", .port = sandbox_.SmtpPort()}; }
  [[nodiscard]] MailServer StartTls() const {
    return {"localhost", sandbox_.SmtpPort(), true, false, "garage", "pa\"ss wörd"};
  }
  [[nodiscard]] MailServer ImplicitTls() const {
    return {"127.0.0.1", sandbox_.SmtpsPort(), true, true, "garage", "secret"};
  }
  [[nodiscard]] MailResult Send(const MailServer& server, const QString& mailbox) {
    return transport_.Send(server, {"garage@example.org", {mailbox + "@example.org"}, "Subject: x\r\n\r\nHello\r\n"},
                           {});
  }
  [[nodiscard]] QJsonArray Mails() const { return QJsonDocument::fromJson(sandbox_.Ask("/api/mails")).array(); }

  SandboxProcess sandbox_;
  CurlMailTransport transport_{sandbox_.AuthorityFile()};
};

TEST_F(MailToSandbox, KeepsOneConnectionToAServer) {
  for (const MailServer& server : {Plain(), StartTls(), ImplicitTls()}) {
    for (int message = 0; message < 3; ++message) {
      const MailResult result = Send(server, "ann");
      EXPECT_EQ(result.outcome, MailOutcome::kSent) << result.error.toStdString();
      EXPECT_EQ(result.error, QString());
    }
  }
  EXPECT_TRUE(transport_.Close());
  EXPECT_TRUE(transport_.Close());
  const QJsonArray mails = Mails();
  ASSERT_EQ(mails.size(), 9);
  const QStringList tls = {QString(), "starttls", "implicit"};
  for (int index = 0; index < 9; ++index) {
    const QJsonObject mail = mails[index].toObject();
    EXPECT_EQ(mail["connection"].toInt(), index / 3 + 1);
    EXPECT_EQ(mail["message"].toInt(), index % 3 + 1);
    EXPECT_EQ(mail["tls"].toString(), tls[index / 3]);
    EXPECT_EQ(mail["user"].toString(), index < 3 ? QString() : "garage");
  }
}

TEST_F(MailToSandbox, CarriesTheMessageAsItIs) {
  const QByteArray body =
      ".\r\n..two\r\n.start\r\nmid . dle\r\n" + QByteArray(200000, 'x').replace("xxxxxxxx", "xxxxxx\r\n") + ".\r\n";
  QList<int> percentages;
  const MailResult result = transport_.Send(
      Plain(), {"garage@example.org", {" ann@example.org", "blind@example.org"}, "Subject: x\r\n\r\n" + body},
      [&](int percent) { percentages.append(percent); });
  ASSERT_EQ(result.outcome, MailOutcome::kSent) << result.error.toStdString();
  EXPECT_EQ(percentages.first(), 0);
  EXPECT_EQ(percentages.last(), 100);
  const QJsonObject mail = QJsonDocument::fromJson(sandbox_.Ask("/api/mails/1")).object();
  EXPECT_TRUE(mail["raw"].toString() == QString::fromLatin1("Subject: x\r\n\r\n" + body));
  EXPECT_EQ(mail["to"].toArray(), (QJsonArray{"ann@example.org", "blind@example.org"}));
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
    const MailResult result = Send(Plain(), c.mailbox);
    EXPECT_EQ(result.outcome, c.outcome) << c.mailbox << ": " << result.error.toStdString();
    EXPECT_EQ(result.transport, c.transport) << c.mailbox << ": " << result.error.toStdString();
    EXPECT_TRUE(result.error.contains(c.part)) << result.error.toStdString();
  }
  // Every one of several recipients has to be accepted.
  const MailResult partly =
      transport_.Send(Plain(), {"garage@example.org", {"ann@example.org", "refused@example.org"}, "x\r\n"}, {});
  EXPECT_EQ(partly.outcome, MailOutcome::kRefused);
}

TEST_F(MailToSandbox, TrustsNoCertificateWithoutItsAuthority) {
  CurlMailTransport trusting;
  for (const MailServer& server : {StartTls(), ImplicitTls()}) {
    const MailResult result = trusting.Send(server, {"a@b.c", {"ann@example.org"}, "x\r\n"}, {});
    EXPECT_EQ(result.outcome, MailOutcome::kRefused);
    EXPECT_TRUE(result.transport);
    EXPECT_TRUE(result.error.contains("No secure connection")) << result.error.toStdString();
  }
  EXPECT_EQ(Mails().size(), 0);
}

TEST_F(MailToSandbox, RefusesAddressesThatSmuggleCommands) {
  for (const char* address :
       {"", " ", "ann@example.org\r\nRCPT TO:<bob@example.org>", "ann@example.org> SIZE=1", "<ann@example.org>"}) {
    const MailResult result =
        transport_.Send(Plain(), {"garage@example.org", {QString::fromLatin1(address)}, "x\r\n"}, {});
    EXPECT_EQ(result.outcome, MailOutcome::kRefused) << address;
    EXPECT_FALSE(result.transport) << address;
  }
  EXPECT_TRUE(transport_.Send({.host = "a/b"}, {}, {}).transport);
  EXPECT_EQ(Mails().size(), 0);
}

}  // namespace
}  // namespace qbx
