// Sessions with the embedded engine: opening, values, transactions, several at once, being stopped and broken off.

#include "database/session.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QThread>
#include <thread>

#include "test_server.h"

namespace qbx {
namespace {

void WriteFile(const QString& path, const QByteArray& content) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(content);
}

TEST(Opening, TakesOnlyWhatIsADatabase) {
  TestServer server;
  WriteFile(server.folder.filePath("Noise.db"), QByteArray(5000, 'x'));
  WriteFile(server.folder.filePath("Empty.db"), {});
  EXPECT_EQ(FailureOf([&] { server.Connect("Absent"); }),
            "4060: Cannot open database \"Absent\" requested by the login. The login failed.");
  EXPECT_TRUE(FailureOf([&] { server.Connect("../Garage"); }).starts_with("4060"));
  EXPECT_TRUE(FailureOf([&] { server.Connect("Noise"); }).starts_with("5171"));
  EXPECT_TRUE(FailureOf([&] { server.Connect("Empty"); }).starts_with("5171"));
  EXPECT_FALSE(QFile::exists(server.folder.filePath("Absent.db")));
  EXPECT_EQ(FailureOf([&] { server.Connect("GARAGE"); }), "");
}

TEST(Opening, TellsADamagedDatabaseFromABadStatement) {
  TestServer server;
  const QString path = server.folder.filePath("Garage.db");
  server.Run("PRAGMA wal_checkpoint(TRUNCATE); PRAGMA journal_mode = DELETE");
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  file.seek(4096);
  file.write(QByteArray(static_cast<int>(file.size()) - 4096, '\x7f'));
  file.close();
  EXPECT_TRUE(FailureOf([&] { server.Connect()->Execute("SELECT * FROM Customers"); }).starts_with("824"));
}

TEST(Opening, ChecksTheLoginOnlyWhereLoginsAreKept) {
  TestServer server;
  server.Run("CREATE TABLE _Logins(Login text, Password text); INSERT INTO _Logins VALUES ('sa', 'Right')");
  for (const char* name : {"Garage", "master"}) {
    const QString database = name;
    EXPECT_EQ(FailureOf([&] { server.Connect(database, {"sa", "right"}); }), "18456: Login failed for user 'sa'.");
    EXPECT_EQ(FailureOf([&] { server.Connect(database, {"SA", "Right"}); }), "");
  }
}

TEST(Opening, RefusesAnOfflineDatabaseUntilItIsBroughtOnline) {
  TestServer server;
  const auto master = server.Connect("master");
  master->Execute("ALTER DATABASE [Garage] SET OFFLINE");
  EXPECT_TRUE(FailureOf([&] { server.Connect(); }).starts_with("942"));
  const QString ask = "SELECT DATABASEPROPERTYEX('Garage', 'Status')";
  EXPECT_EQ(FirstText(master->Execute(ask)), "OFFLINE");
  master->Execute("ALTER DATABASE [Garage] SET ONLINE");
  EXPECT_EQ(FirstText(master->Execute(ask)), "ONLINE");
  EXPECT_EQ(FailureOf([&] { server.Connect(); }), "");
}

TEST(Opening, MasterTellsItsFolder) {
  TestServer server;
  const Recordset rows = Recordset::ReadAll(server.Connect("master")->Execute("sp_helpfile"));
  EXPECT_EQ(rows.Field("filename").ToText().toStdString(), (server.folder.path() + "/master.mdf").toStdString());
}

TEST(IsEmbeddedServerTest, LooksAtTheNameBeforeTheInstance) {
  const std::pair<const char*, bool> cases[] = {{"", true},          {"\\QBX", true},
                                                {"embedded:", true}, {"Embedded:\\QBX", true},
                                                {"PC1", false},      {"PC1\\embedded:", false}};
  for (const auto& [server, expected] : cases)
    EXPECT_EQ(IsEmbeddedServer(server), expected) << server;
}

TEST(Values, HaveTheTypesTheColumnsDeclare) {
  TestServer server;
  const auto session = server.Connect();
  const Recordset rows =
      Recordset::ReadAll(session->Execute("SELECT *, Len(Lastname) AS L FROM Customers WHERE Customer = 'C1'"));
  const std::pair<const char*, Value> expected[] = {{"Customer", Value(QString("C1"))},
                                                    {"Type_ID", Value(1)},
                                                    {"Balance", Value::Decimal(125000, 4)},
                                                    {"Active", Value(true)},
                                                    {"Rating", Value(0.25)},
                                                    {"Since", Value(QDateTime(QDate(2024, 2, 29), QTime(8, 30)))},
                                                    {"Discount", Value::Decimal(725, 2)},
                                                    {"L", Value(6)}};
  for (const auto& [name, value] : expected)
    EXPECT_EQ(rows.Field(name), value) << name;
  EXPECT_EQ(rows.Columns()[0].size, 10);
  EXPECT_EQ(rows.Columns()[0].baseTable, "Customers");
  const Recordset nulls = Recordset::ReadAll(session->Execute("SELECT * FROM Customers WHERE Customer = 'C3'"));
  for (int column = 1; column < static_cast<int>(nulls.Columns().size()); ++column)
    EXPECT_TRUE(nulls.Field(column).IsNull()) << column;
}

TEST(Calls, SameStatementWhileItsResultIsStillRead) {
  TestServer server;
  const auto session = server.Connect();
  for (const char* text : {"SELECT Customer FROM Customers ORDER BY Customer", "proc_list"}) {
    const auto outer = session->Execute(text);
    ASSERT_TRUE(outer->Next());
    EXPECT_EQ(FirstText(session->Execute(text)), "C1");
    ASSERT_TRUE(outer->Next());
    EXPECT_EQ(outer->At(0).ToValue(), Value(QString("C2")));
  }
}

TEST(Calls, ResultOutlivesItsSession) {
  TestServer server;
  auto session = server.Connect();
  const auto rows = session->Execute("SELECT Customer FROM Customers ORDER BY Customer");
  session.reset();
  ASSERT_TRUE(rows->Next());
  EXPECT_EQ(rows->At(0).ToValue(), Value(QString("C1")));
}

TEST(Calls, SchemaChangeReachesAKeptStatement) {
  TestServer server;
  const auto session = server.Connect();
  const QString all = "SELECT * FROM Customer_Types";
  EXPECT_EQ(Recordset::ReadAll(session->Execute(all)).Columns().size(), 2U);
  session->Execute("ALTER TABLE Customer_Types ADD Extra int");
  EXPECT_EQ(Recordset::ReadAll(session->Execute(all)).Columns().size(), 3U);
}

std::string Count(Session& session, const char* table = "Customers") {
  return FirstText(session.Execute(QString("SELECT COUNT(*) FROM ") + table));
}

TEST(Transactions, OnlyTheOutermostCommits) {
  TestServer server;
  const auto session = server.Connect();
  const auto other = server.Connect();
  {
    Transaction outer(*session);
    {
      Transaction inner(*session);
      session->Execute("DELETE FROM Customers");
      inner.Commit();
    }
    EXPECT_TRUE(session->InTransaction());
    EXPECT_EQ(Count(*other), "3");
    outer.Commit();
  }
  EXPECT_EQ(Count(*other), "0");
}

TEST(Transactions, InnerRollbackTakesTheOuterWithIt) {
  TestServer server;
  const auto session = server.Connect();
  {
    Transaction outer(*session);
    session->Execute("DELETE FROM Customers");
    { Transaction inner(*session); }
    EXPECT_TRUE(FailureOf([&] { session->Execute("DELETE FROM Customers"); }).starts_with("3930"));
    EXPECT_TRUE(FailureOf([&] { outer.Commit(); }).starts_with("3930"));
  }
  EXPECT_FALSE(session->InTransaction());
  EXPECT_EQ(Count(*session), "3");
}

TEST(Transactions, EndWithTheSession) {
  TestServer server;
  auto session = server.Connect();
  session->Begin();
  session->Execute("DELETE FROM Customers");
  const auto rows = session->Execute("SELECT * FROM Customer_Types");
  session.reset();
  const auto other = server.Connect();
  EXPECT_EQ(Count(*other), "3");
  other->Execute("DELETE FROM Customers");
}

TEST(TwoSessions, WriterMakesTheOtherWaitAndThenTimeOut) {
  TestServer server;
  const auto writer = server.Connect();
  const auto other = server.Connect();
  other->SetCommandTimeout(1);
  writer->Begin();
  writer->Execute("UPDATE Customers SET Active = 1");
  EXPECT_EQ(Count(*other), "3");  // readers are not held up
  const QString change = "UPDATE Customers SET Active = 0";
  EXPECT_EQ(FailureOf([&] { other->Execute(change); }), "-2: Timeout expired");
  other->SetCommandTimeout(60);
  std::thread later([&] {
    QThread::msleep(50);
    writer->Commit();
  });
  EXPECT_EQ(FailureOf([&] { other->Execute(change); }), "");
  later.join();
}

TEST(Stopping, InterruptedWriteDoomsTheTransaction) {
  TestServer server;
  const auto session = server.Connect();
  session->Begin();
  session->Execute("DELETE FROM Customers WHERE Customer = 'C1'");
  std::atomic<bool> done = false;
  std::thread interrupter([&] {
    while (!done) {
      session->Interrupt();
      QThread::msleep(1);
    }
  });
  const QString endless =
      "INSERT INTO Customers (Customer) WITH RECURSIVE n(i) AS (SELECT 100 UNION ALL SELECT i + 1 FROM n) SELECT i "
      "FROM n";
  const std::string failure = FailureOf([&] { session->Execute(endless); });
  done = true;
  interrupter.join();
  EXPECT_EQ(failure, "0: Operation cancelled by user");
  EXPECT_NE(FailureOf([&] { session->Commit(); }), "");
  session->Rollback();
  EXPECT_EQ(Count(*session), "3");
}

TEST(Breaking, EverySessionIsLostAndItsTransactionUndone) {
  TestServer server;
  const auto session = server.Connect();
  session->Begin();
  session->Execute("DELETE FROM Customers");
  server.engine.BreakSessions();
  EXPECT_FALSE(session->IsAlive());
  EXPECT_EQ(FailureOf([&] { session->Execute("SELECT 1"); }),
            "11: [DBNETLIB][ConnectionWrite (send()).]General network error. Check your network documentation.");
  EXPECT_TRUE(session->InTransaction());
  const auto fresh = server.Connect();
  EXPECT_TRUE(fresh->IsAlive());
  EXPECT_EQ(Count(*fresh), "3");
  fresh->Execute("DELETE FROM Customers");
}

}  // namespace
}  // namespace qbx
