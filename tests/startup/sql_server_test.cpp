// The program on a SQL Server.

#include <gtest/gtest.h>

#include <QFile>

#include "hostdb/database_upgrade.h"
#include "started_application.h"
#include "startup/connection_test.h"
#include "tds_server/certificates.h"
#include "tds_server/server.h"

namespace qbx::test {
namespace {

constexpr char kServerDatabase[] = "QBXKorvelManager";

/// A server with a host database in a folder of its own, and a program that is told where it is.
struct SqlServerTest : testing::Test, StartedApplication {
  TempFolder serverFolder;
  EmbeddedEngine engine{serverFolder.Path(), clock, KeepUpToDate};
  tds::Server server{engine};
  QString said;  ///< by the last test of the connection

  SqlServerTest() {
    const QString file = serverFolder.File(QString::fromLatin1(kServerDatabase) + QStringLiteral(".db"));
    if (const auto problem = CreateHostDatabase(file, ExistingFile::kRefuse)) ADD_FAILURE() << problem->toStdString();
    Set("Server", QStringLiteral("127.0.0.1,%1").arg(server.Port()));
  }
  void Set(const char* name, const QString& value) {
    PutMachine(QStringLiteral("\\Login"), QString::fromLatin1(name), value);
  }
  /// Behind the program's back.
  void OnServer(const char* sql) {
    engine.Connect({QString(), QString::fromLatin1(kServerDatabase)}, {}, 5)->Execute(QString::fromLatin1(sql));
  }
  ConnectionProblem Problem(const char* database = "") {
    Make();
    (void)application->start.SettleHeadless(
        {.user = {}, .databaseName = QString::fromLatin1(database), .instance = {}});
    const ConnectionFindings findings = TestConnection(*application);
    EXPECT_EQ(findings.text.isEmpty(), findings.problem == ConnectionProblem::kNone);
    EXPECT_FALSE(findings.text.contains(QLatin1String("secret")));
    EXPECT_EQ(ui.Messages().size(), 0U);
    said = findings.text;
    return findings.problem;
  }
};

TEST_F(SqlServerTest, RunsStatementsAndReopensALostConnection) {
  ASSERT_EQ(Launch(QStringLiteral("/userid:\"Pat\"")), StartOutcome::kRunning);
  ASSERT_TRUE(application->hostConnection.Ready());
  OnServer(
      "INSERT INTO Customers (Customer) VALUES (1); INSERT INTO [Campaign Results] (RecordID, CampaignID, Customer, Mobile, Email, Send_SMS) VALUES (1, 5, 1, '1', '', 1)");
  server.EndConnections();
  Recordset rows;
  EXPECT_FALSE(application->statements.dbOpenRec(rows, QStringLiteral("SELECT CampaignID FROM [Campaign Results]")));
  EXPECT_EQ(rows.Field(0), Value(5));
  EXPECT_TRUE(Log().contains(QLatin1String("No DB Connection - reconnecting")));
  EXPECT_EQ(Ask(QStringLiteral("SELECT Details FROM _Log WHERE TableKey = 'CONN'")),
            QStringLiteral("Connection Lost - reconnected."));
  // The answer is lost, so the statement is repeated: what it marks must be what it marked before.
  server.PlannedFaults().Add({.kind = tds::FaultKind::kReset,
                              .moment = tds::FaultMoment::kAnswered,
                              .match = QStringLiteral("SET Processed")});
  EXPECT_TRUE(application->statements
                  .dbExecute(QStringLiteral("UPDATE [Campaign Results] SET Processed = 1 WHERE RecordID = 1"))
                  .Ok());
  EXPECT_EQ(server.PlannedFaults().Happened(), 1);
  EXPECT_EQ(Ask(QStringLiteral("SELECT BySMS_Processed FROM Campaign_Results_Counters")), QStringLiteral("1"));
  server.SetListening(false);
  server.EndConnections();
  EXPECT_TRUE(application->statements.dbOpenRec(rows, QStringLiteral("SELECT 1")));
}

TEST_F(SqlServerTest, NamesTheProblemInATestOfTheConnection) {
  Set("SQLLoginUser", QStringLiteral("garage"));
  EXPECT_EQ(Problem(), ConnectionProblem::kNone);
  server.PlannedFaults().Add({.kind = tds::FaultKind::kReset, .moment = tds::FaultMoment::kLogin});
  EXPECT_EQ(Problem(), ConnectionProblem::kConnectionLost);
  EXPECT_EQ(Problem("Nowhere"), ConnectionProblem::kNoDatabase);
  EXPECT_EQ(Problem("Some;where"), ConnectionProblem::kSettingRefused);
  Set("Company", QStringLiteral("B"));
  EXPECT_EQ(Problem(), ConnectionProblem::kCompanyMissing);
  Set("Company", QString());
  const auto master = engine.Connect({QString(), QStringLiteral("master")}, {}, 5);
  const QString status = QStringLiteral("ALTER DATABASE [%1] SET ").arg(QLatin1String(kServerDatabase));
  master->Execute(status + QStringLiteral("OFFLINE"));
  EXPECT_EQ(Problem(), ConnectionProblem::kDatabaseOffline);
  master->Execute(status + QStringLiteral("ONLINE"));
  OnServer("DELETE FROM _Procedures WHERE Name = 'proc__OptionVersion'");
  EXPECT_EQ(Problem(), ConnectionProblem::kHostTablesMissing);
  OnServer(
      "CREATE TABLE _Logins (Login nvarchar(50), Password nvarchar(50)); INSERT INTO _Logins VALUES ('garage', 'secret')");
  EXPECT_EQ(Problem(), ConnectionProblem::kLoginRefused);
  Set("Driver", QStringLiteral("No Such Driver"));
  EXPECT_EQ(Problem(), ConnectionProblem::kDriverMissing);
  Set("Driver", QStringLiteral("No}Driver"));
  EXPECT_EQ(Problem(), ConnectionProblem::kSettingRefused);
  Set("Driver", QString());
  Set("Encrypt", QStringLiteral("Yes"));
  EXPECT_EQ(Problem(), ConnectionProblem::kSettingRefused);
  Set("Encrypt", QStringLiteral("Y"));
  const int logins = server.Counted().logins;
  EXPECT_EQ(Problem(), ConnectionProblem::kCannotEncrypt);
  EXPECT_EQ(server.Counted().logins, logins) << "nothing was to be said in the clear";
  Set("Server", QStringLiteral("no such name"));
  EXPECT_EQ(Problem(), ConnectionProblem::kServerName);
  Set("Server", QStringLiteral("computer.invalid"));
  EXPECT_EQ(Problem(), ConnectionProblem::kNameUnknown);
  Set("Server", QStringLiteral("127.0.0.1,%1").arg(server.Port()));
  server.SetListening(false);
  EXPECT_EQ(Problem(), ConnectionProblem::kPortClosed);
  tds::Server closing(engine);
  closing.PlannedFaults().Add({.kind = tds::FaultKind::kClose, .moment = tds::FaultMoment::kConnect});
  Set("Server", QStringLiteral("127.0.0.1,%1").arg(closing.Port()));
  EXPECT_EQ(Problem(), ConnectionProblem::kConnectionLost);
  Set("Server", QStringLiteral("a;b"));
  EXPECT_EQ(Problem(), ConnectionProblem::kServerName);
  Set("Server", QStringLiteral("127.0.0.1,%1").arg(closing.Port()));
  EXPECT_FALSE(QFile::exists(folder.File(QStringLiteral("MARKETING.LOG"))));
  Set("SQLLoginPassword", QStringLiteral("secret"));
  EXPECT_EQ(Problem(), ConnectionProblem::kPasswordUnreadable);
  EXPECT_EQ(closing.Counted().logins, 0);
  Set("Server", QString());
  EXPECT_EQ(Problem("Nowhere"), ConnectionProblem::kNoDatabase);
  EXPECT_TRUE(said.startsWith(QLatin1String("No SQL Server is set")));
}

TEST_F(SqlServerTest, EncryptsOnlyWithACertificateThatIsTrustedForTheName) {
  const tds::CertificateFiles files = tds::MakeCertificates(serverFolder.Path(), QStringLiteral("localhost"));
  const tds::TlsIdentity identity(files.certificate, files.key);
  tds::Server encrypting(engine, 0, &identity);
  const auto at = [&](const char* name) {
    Set("Server", QStringLiteral("%1,%2").arg(QString::fromLatin1(name)).arg(encrypting.Port()));
  };
  at("localhost");
  Set("Encrypt", QStringLiteral("y"));
  EXPECT_EQ(Problem(), ConnectionProblem::kCertificateRefused);
  EXPECT_TRUE(said.contains(QLatin1String("no authority that this computer knows has signed it")));
  for (const QByteArray& useless : {QByteArray("nowhere.pem"), files.key.toUtf8()}) {
    folder.Write(QStringLiteral("QBX.INI"), "[Service]\nCaFile=" + useless + "\n");
    EXPECT_EQ(Problem(), ConnectionProblem::kSettingRefused);
  }
  folder.Write(QStringLiteral("QBX.INI"), "[Service]\nCaFile=" + files.authority.toUtf8() + "\n");
  EXPECT_EQ(encrypting.Counted().logins, 0);
  EXPECT_EQ(Problem(), ConnectionProblem::kNone);
  EXPECT_EQ(encrypting.Counted().encryptedLogins, encrypting.Counted().logins);
  for (const tds::FaultKind end : {tds::FaultKind::kClose, tds::FaultKind::kReset}) {
    encrypting.PlannedFaults().Add({.kind = end, .moment = tds::FaultMoment::kLogin});
    EXPECT_EQ(Problem(), ConnectionProblem::kConnectionLost);
  }
  encrypting.PlannedFaults().Add({.kind = tds::FaultKind::kReset, .moment = tds::FaultMoment::kRequest});
  EXPECT_EQ(Problem(), ConnectionProblem::kConnectionLost);
  at("127.1");
  EXPECT_EQ(Problem(), ConnectionProblem::kCertificateRefused);
  EXPECT_TRUE(said.contains(QLatin1String("was issued for localhost, 127.0.0.1, not for 127.1")));
}

}  // namespace
}  // namespace qbx::test
