// The connection and commands, over the embedded engine.

#include "database/connection.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "database/command.h"
#include "test_server.h"

namespace qbx {
namespace {

const QString kString = "Provider=SQLOLEDB;Data Source=;Initial Catalog=Garage;";
const Login kLogin{"sa", "pw"};

class ConnectionTest : public testing::Test {
 protected:
  void Open() { connection.Open(kString, kLogin); }
  std::string Count() { return FirstText(connection.Driver().Execute("SELECT COUNT(*) FROM Customers")); }

  TestServer server;
  Connection connection{server.engine.Factory()};
};

TEST_F(ConnectionTest, KeepsTheErrorsOfAFailedOpen) {
  EXPECT_NE(FailureOf([&] { connection.Open("Data Source=;Initial Catalog=Nope;", kLogin); }), "");
  ASSERT_EQ(connection.Errors().size(), 1U);
  EXPECT_EQ(connection.Errors()[0].number, 4060);
  EXPECT_FALSE(connection.IsOpen());
  EXPECT_FALSE(connection.WasOpen());
  try {
    (void)connection.Driver();
    FAIL();
  } catch (const DatabaseError& error) {
    EXPECT_TRUE(error.ConnectionLost());
  }
}

TEST_F(ConnectionTest, ReopensWithTheSameLogin) {
  server.Run("CREATE TABLE _Logins(Login text, Password text); INSERT INTO _Logins VALUES ('sa', 'pw')");
  Open();
  server.engine.BreakSessions();
  EXPECT_NE(FailureOf([&] { Count(); }), "");
  connection.Reopen();
  EXPECT_EQ(Count(), "3");
  connection.Close();
  EXPECT_TRUE(connection.WasOpen());
  connection.Reopen();
  EXPECT_EQ(Count(), "3");
}

TEST_F(ConnectionTest, TimeOutHoldsForLaterSessionsToo) {
  connection.SetCommandTimeout(1);
  Open();
  EXPECT_EQ(FailureOf([&] { connection.Driver().Execute("proc_slow"); }), "-2: Timeout expired");
}

TEST_F(ConnectionTest, LongWorkIsPumpedForAndCancelled) {
  Open();
  int pumped = 0;
  const auto work = [&] { connection.Driver().Execute("proc_slow"); };
  EXPECT_EQ(FailureOf([&] {
              connection.RunLong(
                  work, [&] { ++pumped; }, [&] { return pumped >= 3; });
            }),
            "0: Operation cancelled by user");
  EXPECT_GE(pumped, 3);
  EXPECT_EQ(Count(), "3");
}

TEST_F(ConnectionTest, ACancelThatComesTooLateHitsNothingElse) {
  Open();
  const auto rows = connection.Driver().Execute("SELECT Customer FROM Customers");
  std::atomic<int> pumps = 0;
  const auto work = [&pumps] {
    while (pumps < 2)  // by then it was cancelled once
      std::this_thread::yield();
  };
  connection.RunLong(
      work, [&pumps] { ++pumps; }, [] { return true; });
  int read = 0;
  while (rows->Next())
    ++read;
  EXPECT_EQ(read, 3);
}

TEST_F(ConnectionTest, FailuresOfWorkAndPumpReachTheCaller) {
  Open();
  EXPECT_EQ(FailureOf([&] { connection.RunLong([&] { connection.Driver().Execute("proc_raise"); }, {}, {}); }),
            "50001: Not 'today'.");
  const auto work = [&] { connection.Driver().Execute("proc_slow"); };
  EXPECT_THROW(connection.RunLong(work, [] { throw std::runtime_error("closed"); }, {}), std::runtime_error);
}

class CommandTest : public ConnectionTest {
 protected:
  CommandTest() {
    Open();
    command.connection = &connection;
    command.commandText = "proc_add";
    command.parameters = connection.Driver().DescribeProcedure(command.commandText);
  }
  Command command;
};

TEST_F(CommandTest, SendsOnlyWhatWasSet) {
  command.SetParameter("@CUSTOMER", QString("N1"));
  command.SetParameter(4, true);
  const Recordset rows = Recordset::ReadAll(command.Open());
  EXPECT_EQ(rows.Field("Type_ID"), Value(1));
  EXPECT_EQ(rows.Field("Active"), Value(true));
}

TEST_F(CommandTest, RefusesValuesThatDoNotFitBeforeTheyAreSent) {
  const std::pair<int, Value> cases[] = {{1, Value(QString("toolong"))},
                                         {2, Value(QString("many"))},
                                         {3, Value(QString("31.12."))},
                                         {5, Value(QDateTime(QDate(2024, 1, 1), QTime()))}};
  for (const auto& [position, value] : cases) {
    try {
      command.SetParameter(position, value);
      ADD_FAILURE() << position;
    } catch (const DatabaseError& error) {
      EXPECT_EQ(error.Number(), kWrongType);
      EXPECT_TRUE(error.Errors().empty());
      EXPECT_EQ(error.Description(), "Application uses a value of the wrong type for the current operation.");
    }
  }
  EXPECT_NE(FailureOf([&] { command.SetParameter("@No", 1); }), "");
  EXPECT_NE(FailureOf([&] { command.SetParameter(6, 1); }), "");
}

TEST_F(CommandTest, KeepsItsErrorsOnTheConnection) {
  EXPECT_NE(FailureOf([&] { command.Execute(); }), "");
  ASSERT_EQ(connection.Errors().size(), 1U);
  EXPECT_EQ(connection.Errors()[0].number, 201);
}

TEST_F(CommandTest, ItsTimeOutHoldsForItsCallOnly) {
  connection.SetCommandTimeout(30);
  command.commandText = "proc_slow";
  command.parameters.clear();
  command.commandTimeout = 1;
  EXPECT_EQ(FailureOf([&] { command.Execute(); }), "-2: Timeout expired");
  EXPECT_EQ(connection.CommandTimeout(), 30);
}

}  // namespace
}  // namespace qbx
