#include "database/connect_database.h"

#include "database/database_fixture.h"
#include "database/database_service.h"
#include "support/fakes.h"
#include "support/memory_registry_store.h"

namespace qbx {
namespace {

using test::Failure;
using test::Single;

const QString kStatus = "SELECT DATABASEPROPERTYEX('QBX', 'Status')";

class ConnectTest : public test::DatabaseFixture {
 protected:
  ConnectTest() {
    settings_.computerName = "WORKSHOP-PC";
    settings_.alternativePassword = "spare";
    settings_.readFConfig = [this] { return fConfig_; };
    settings_.storeFConfig = [this](const QString& value) { fConfig_ = value; };
  }

  bool Connect(const QString& server = "OFFICE", const QString& database = "QBX") {
    DatabaseConnector connector(connection_, statements_, services_, shell_, diagnostics, settings_);
    const bool connected = connector.ConnectDatabase(server, {"sa", "secret"}, database);
    flags_ = connector.Flags();
    return connected;
  }

  void FailToOpen(int times, const QString& description, int number = kUnspecifiedError) {
    for (int time = 0; time < times; ++time)
      server_.opens.push_back(Failure(description, number).error);
  }

  ConnectSettings settings_;
  ConnectionFlags flags_;
  QString fConfig_;
  test::FakeServices manager_;
  ServiceControl services_{manager_, log};
  test::FakeShell shell_;
};

TEST_F(ConnectTest, GoesByWayOfMasterToADatabaseThatIsOnline) {
  server_.Expect(kStatus, Single(Value(QString("Online"))));
  EXPECT_TRUE(Connect());
  EXPECT_EQ(server_.calls, (QStringList{"open master sa/secret 6", kStatus, "open QBX sa/secret 15"}));
  EXPECT_EQ(flags_.status, DatabaseStatus::kOnline);
  EXPECT_EQ(connection_.CommandTimeout(), 20);
  EXPECT_TRUE(ui.Messages().empty());
}

TEST_F(ConnectTest, AnotherCompanyGoesStraightToItsDatabase) {
  settings_.companyCode = "B";
  EXPECT_TRUE(Connect());
  EXPECT_EQ(server_.calls, QStringList{"open QBX sa/secret 6"});
}

TEST_F(ConnectTest, KeepsTheFolderOfMasterItself) {
  server_.Expect("sp_helpfile", test::Rows({{.name = "name"}, {.name = "filename"}},
                                           {{Value(QString("master")), Value(QString("C:\\Data\\master.mdf"))}}));
  EXPECT_TRUE(Connect("OFFICE", "Master"));
  EXPECT_EQ(flags_.databaseFileFolder, "C:\\Data\\");
  EXPECT_EQ(server_.Count("DATABASEPROPERTYEX"), 0);
}

TEST_F(ConnectTest, ARefusedLoginGetsTheAlternativePassword) {
  FailToOpen(1, "Login failed for user 'sa'.", kAuthenticationFailed);
  server_.Expect(kStatus, Single(Value(QString("ONLINE"))));
  EXPECT_TRUE(Connect());
  EXPECT_TRUE(flags_.alternativePassword);
  connection_.Reopen();
  EXPECT_EQ(server_.calls.first(5), (QStringList{"open master sa/secret 6", "open master sa/spare 6", kStatus,
                                                 "open QBX sa/spare 15", "open QBX sa/spare 15"}));
}

TEST_F(ConnectTest, TheErrorOfTheAlternativePasswordIsTheOneShown) {
  FailToOpen(1, "Login failed for user 'sa'.", kAuthenticationFailed);
  FailToOpen(1, "[DBNETLIB]Account locked (Connect()).", kAuthenticationFailed);
  EXPECT_FALSE(Connect());
  EXPECT_FALSE(flags_.alternativePassword);
  const QString message =
      "The following error was reported while attempting connection to the database server.\rAccount locked ";
  EXPECT_EQ(ui.MessageTexts(), QStringList{message});
  EXPECT_EQ(ui.Messages()[0].icon, MessageIcon::kStop);
  EXPECT_EQ(LogLines(),
            (QStringList{"Database Connect Error: -2147217843, Account locked ", message, "Server:OFFICE  Pw: se"}));
  EXPECT_FALSE(connection_.IsOpen());
}

TEST_F(ConnectTest, ADatabaseThatIsNotOnlineIsAskedAbout) {
  const QString start = "The database is not currently available.\r\r";
  const QString end = "\r\rDo you want to attempt to bring the database back online?";
  const std::pair<Value, QString> cases[] = {
      {Value(QString("OFFLINE")),
       "It may be in the process of being restored, or has not been configured yet, or may be offline."},
      {Value::Null(), "It may not have been configured or initialised yet, or may be offline."},
  };
  for (const auto& [state, reason] : cases) {
    ui.Clear();
    server_.calls.clear();
    server_.Expect(kStatus, Single(state));
    ui.Answer({}, MessageAnswer::kNo);
    EXPECT_TRUE(Connect());
    EXPECT_EQ(ui.MessageTexts(), QStringList{start + reason + end});
    EXPECT_EQ(ui.Messages()[0].question, Question::kBringDatabaseOnline);
    EXPECT_EQ(flags_.status, DatabaseStatus::kDeclined);
    EXPECT_EQ(server_.calls.last(), kStatus) << "the connection stays on master";
  }
}

TEST_F(ConnectTest, BringsADatabaseOnline) {
  server_.Expect(kStatus, Single(Value(QString("OFFLINE"))));
  server_.Expect(kStatus, Single(Value(QString("ONLINE"))));
  ui.Answer("back online?", MessageAnswer::kYes);
  EXPECT_TRUE(Connect());
  EXPECT_EQ(server_.calls, (QStringList{"open master sa/secret 6", kStatus, "ALTER DATABASE [QBX] SET ONLINE", kStatus,
                                        "open QBX sa/secret 15"}));
  EXPECT_EQ(flags_.status, DatabaseStatus::kOnline);
  EXPECT_EQ(ui.StatusTexts(), QStringList{"Attempting to bring the database online..."});
  EXPECT_FALSE(ui.StatusVisible());
}

TEST_F(ConnectTest, ADatabaseThatStaysOfflineIsNotAvailable) {
  server_.Expect(kStatus, Single(Value(QString("OFFLINE"))));
  server_.Expect("ALTER", Failure("[X]ALTER DATABASE statement failed."));
  ui.Answer({}, MessageAnswer::kYes);
  EXPECT_TRUE(Connect());
  EXPECT_EQ(flags_.status, DatabaseStatus::kNotAvailable);
  EXPECT_EQ(ui.MessageTexts().last(), "ALTER DATABASE statement failed.\r\n");
  EXPECT_EQ(server_.Count("open QBX"), 0);
}

TEST_F(ConnectTest, ADatabaseThatCannotBeOpenedCountsAsNeverConnected) {
  server_.opens.push_back(std::nullopt);  // master
  FailToOpen(1, "damaged", kStatementFailed);
  server_.Expect(kStatus, Single(Value(QString("SUSPECT"))));
  EXPECT_FALSE(Connect());
  EXPECT_EQ(flags_.status, DatabaseStatus::kNotAvailable);
  EXPECT_EQ(ui.Messages().size(), 1U) << "what is wrong, and no question";
  EXPECT_FALSE(statements_.dbExecute("SELECT 1").Ok());
  EXPECT_EQ(ui.Messages().size(), 1U) << "later statements fail softly";
}

TEST_F(ConnectTest, ANameCannotAddToTheConnectionStringOrTheStatement) {
  EXPECT_FALSE(Connect("OFFICE", "QBX;Data Source=ELSEWHERE"));
  EXPECT_FALSE(Connect("OFFICE", "QBX] SET OFFLINE --"));
  EXPECT_TRUE(server_.calls.isEmpty());
  EXPECT_EQ(ui.Messages().size(), 2U);
}

TEST_F(ConnectTest, OffersToStartTheServiceOfThisComputer) {
  manager_.states.insert("mssql$qbx", ServiceState::kStopped);
  FailToOpen(2, "no answer");
  ui.Answer(
      "no answer\r\rThe Database Service on this computer may not be running, or it may be being "
      "blocked by your Firewall software.\r\r Do you want to try and start",
      MessageAnswer::kYes);
  settings_.settingsVersion2 = true;
  EXPECT_FALSE(Connect("workshop-pc"));
  EXPECT_EQ(ui.Messages()[0].question, Question::kStartDatabaseService);
  EXPECT_EQ(ui.Messages().size(), 1U);
  EXPECT_EQ(shell_.commands, (QStringList{"netsh firewall set portopening UDP 1434 SQL_Browser ENABLE",
                                          "netsh firewall set portopening TCP 445 SQL_Server_NP2 ENABLE",
                                          "netsh firewall set portopening TCP 135 SQL_Server_NP ENABLE"}));
  EXPECT_EQ(fConfig_, "Y");
  EXPECT_EQ(manager_.requests, (QStringList{"mssql$qbx:1", "mssql$qbx:0"}));
  EXPECT_EQ(ui.StatusTexts(), QStringList(6,
                                          "Please wait a few seconds while the program attempts to "
                                          "start the Database Service..."));
  EXPECT_EQ(ui.WaitedFor(), 3 * (1600 + 1500));
  EXPECT_EQ(server_.calls, (QStringList{"open master sa/secret 6", "open master sa/secret 9"}));
  EXPECT_EQ(LogLines()[1], "Database Connection Attempt 2: no answer");
  EXPECT_EQ(LogLines().last(), "Server:workshop-pc\\QBX  Pw: se");
}

TEST_F(ConnectTest, RefusedRequestsShortenTheWaitsAndOpenPortsStayOpen) {
  fConfig_ = "Y";
  FailToOpen(2, "no answer");
  ui.Answer({}, MessageAnswer::kYes);
  EXPECT_FALSE(Connect("WORKSHOP-PC\\QBX"));
  EXPECT_TRUE(shell_.commands.isEmpty());
  EXPECT_EQ(ui.WaitedFor(), 6 * 800);
}

TEST(ConnectionString, AddressesTheInstance) {
  const QString server = "PC1\\QBX";
  ConnectSettings settings;
  settings.settingsVersion2 = true;
  EXPECT_EQ(BuildConnectionString(server, "QBX_North", settings),
            "Provider=SQLOLEDB;OLE DB Services = -2;Data Source=PC1\\QBX\\QBX;Initial "
            "Catalog=QBX_North;");
  settings.overrideAutomaticSettings = true;
  EXPECT_EQ(ServerName(server, settings), server);
}

TEST(IsLocalServer, KnowsThisComputer) {
  const QString computer = "A-VERY-LONG-NAME-OF-A-PC";
  for (const char* server : {"LocalHost\\QBX", "127.0.0.1", "a-very-long-nam", "A-VERY-LONG-NAM\\QBX"})
    EXPECT_TRUE(IsLocalServer(server, computer)) << server;
  for (const char* server : {"OFFICE", "A-VERY", "localhost2"})
    EXPECT_FALSE(IsLocalServer(server, computer)) << server;
}

class DatabaseServiceTest : public ConnectTest {
 protected:
  QString Info() {
    ShowDatabaseServiceInfo(services_, registry_, ui);
    return ui.MessageTexts().last();
  }
  void Put(const QString& key, const QString& name, const QString& text) {
    registry_.Put(RegistryHive::kLocalMachine, QString("SOFTWARE\\Microsoft\\Microsoft SQL Server\\") + key, name,
                  text);
  }
  test::MemoryRegistryStore registry_;
};

TEST_F(DatabaseServiceTest, TellsPortAndState) {
  EXPECT_EQ(Info(), "Database Service may not be installed or discovery is not possible.");
  EXPECT_EQ(FindDatabaseService(services_), "mssqlserver");
  manager_.states.insert("mssqlserver", ServiceState::kStopped);
  EXPECT_EQ(Info(), "Database Service is installed. TCP Port \r\rService Status: Stopped");

  manager_.states.insert("mssql$qbx", ServiceState::kRunning);
  Put("Instance Names\\SQL", "QBX", "MSSQL.1");
  const QString ports = "MSSQL.1\\MSSQLServer\\SuperSocketNetLib\\Tcp\\IPAll";
  Put(ports, "TcpPort", "1433");
  const QString start = "QBX Database Service is installed. TCP Port ";
  const QString end = "\r\rService Status: Running";
  EXPECT_EQ(Info(), start + QString("1433") + end);
  Put(ports, "TcpDynamicPorts", "0");
  EXPECT_EQ(Info(), start + QString("1433") + end);
  Put(ports, "TcpDynamicPorts", "49170");
  EXPECT_EQ(Info(), start + QString("49170") + end);
}

TEST_F(DatabaseServiceTest, AsksASecondTimeWhenTheManagerCannotBeOpened) {
  manager_.states.insert("mssql$qbx", ServiceState::kRunning);
  manager_.available = false;
  EXPECT_EQ(FindDatabaseService(services_), "mssql$qbx");
}

}  // namespace
}  // namespace qbx
