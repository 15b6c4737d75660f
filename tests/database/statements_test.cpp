#include "database/statements.h"

#include <thread>

#include "database/database_fixture.h"
#include "database/list_query.h"

namespace qbx {
namespace {

using test::Failure;
using test::Lost;
using test::Rows;
using test::Single;

class StatementsTest : public test::DatabaseFixture {
 protected:
  const QString read_ = "SELECT 1";
  const QString lostText_ = "The connection is broken\r\n";
};

TEST_F(StatementsTest, ThreeLossesOfOneReadAreBridgedSilently) {
  Open();
  for (int loss = 0; loss < 3; ++loss)
    server_.Expect(read_, Lost());
  server_.Expect(read_, Single(42));
  Recordset records;
  EXPECT_FALSE(statements_.dbOpenRec(records, read_));
  EXPECT_EQ(records.Field(0).ToInt(), 42);
  EXPECT_EQ(server_.Count("open QBX sa/pw"), 4);
  EXPECT_EQ(server_.Count("@TableKey=CONN @Details=Connection Lost - reconnected."), 3);
  EXPECT_EQ(LogLines(), QStringList(3, "No DB Connection - reconnecting"));
  EXPECT_EQ(ui.WaitedFor(), 750);
  EXPECT_TRUE(ui.Messages().empty());
  EXPECT_TRUE(ui.Statuses().empty());
}

TEST_F(StatementsTest, TheFourthLossIsReportedAfterOneWaitForTheServer) {
  Open();
  server_.Expect(read_, Lost());
  server_.opens.assign(5 + 1 + 1, Lost().error);
  Recordset records;
  EXPECT_TRUE(statements_.dbOpenRec(records, read_));
  EXPECT_FALSE(records.IsOpen());
  EXPECT_EQ(server_.Count("open QBX"), 1 + 7);
  EXPECT_EQ(ui.WaitedFor(), 750 + 11'000);
  EXPECT_EQ(ui.MessageTexts(), QStringList{lostText_});
  EXPECT_TRUE(lastError_.DbErrorShown);
}

TEST_F(StatementsTest, ExecuteBridgesOneLossOnly) {
  Open();
  const QString sql = "UPDATE x";
  server_.Expect(sql, Lost());
  EXPECT_TRUE(statements_.dbExecute(sql).Ok());
  EXPECT_TRUE(ui.Messages().empty());

  server_.Expect(sql, Lost());
  server_.Expect(sql, Lost());
  EXPECT_EQ(statements_.dbExecute(sql).errorNumber, kUnspecifiedError);
  EXPECT_EQ(ui.MessageTexts(), (QStringList{"A problem has occured with the database connection. You should quit the "
                                            "program and restart the computer.",
                                            lostText_}));
  EXPECT_EQ(lastError_.LastEmailErrorNo, kUnspecifiedError);
  EXPECT_EQ(lastError_.LastEmailError, "The connection is broken");
  EXPECT_EQ(LogLines().filter("dbExecute Error - UPDATE x").size(), 3);
}

TEST_F(StatementsTest, AServerThatRestartsIsWaitedForUnlessItRefusesTheLogin) {
  Open();
  server_.Expect("UPDATE x", Lost());
  server_.opens = {Lost().error, Failure("Cannot open database", 4060).error, std::nullopt,
                   Failure("Login failed", 18456).error};
  EXPECT_TRUE(statements_.dbExecute("UPDATE x").Ok());
  EXPECT_TRUE(ui.Messages().empty());
  server_.Expect("UPDATE x", Lost());
  EXPECT_FALSE(statements_.dbExecute("UPDATE x").Ok());
  EXPECT_EQ(ui.WaitedFor(), 3000);
}

TEST_F(StatementsTest, CancelEndsTheWaitingForAServerAndTheConnectionCountsAsLost) {
  Open();
  server_.Expect("UPDATE x", Lost());
  server_.opens.assign(2, Lost().error);
  ui.OnPump([] { std::this_thread::sleep_for(std::chrono::milliseconds(50)); });
  ui.OnStatus([this](const StatusView&) { ui.PressCancel(); });
  ui.OnMessage([](const Message&) -> std::optional<MessageAnswer> {
    std::this_thread::sleep_for(std::chrono::milliseconds(600));  // somebody reads it
    return std::nullopt;
  });
  EXPECT_FALSE(statements_.dbExecute("UPDATE x").Ok());
  EXPECT_EQ(ui.StatusTexts(), QStringList{"Waiting for the database..."});
  EXPECT_FALSE(ui.StatusVisible());
  EXPECT_FALSE(statements_.BeginWaiting(MayCancel::kYes)(std::chrono::milliseconds(0))) << "the same command";
  ui.Answer("OK to quit?", MessageAnswer::kYes);
  EXPECT_FALSE(statements_.dbRunCommandWithParameters("proc_x", {}));
}

TEST_F(StatementsTest, ACommandThatTellsLossesOnceSaysBothInOneBoxAndNothingMoreAfterAYes) {
  Open();
  const QString sql = "UPDATE x";
  const Statements::Telling once(statements_, Statements::Tells::kLossOnce);
  for (int loss = 0; loss < 2; ++loss)
    server_.Expect(sql, Failure("General network error", kUnspecifiedError));
  ui.Answer("OK to quit?", MessageAnswer::kYes);
  EXPECT_FALSE(statements_.dbExecute(sql).Ok());
  ASSERT_EQ(ui.Messages().size(), 1U);
  EXPECT_TRUE(ui.MessageTexts().first().startsWith("A problem has occured")) << "above the question";
  EXPECT_EQ(server_.Count("@TableKey=CONN"), 1) << "whichever routine opened it again";
  const qsizetype calls = server_.calls.size();
  EXPECT_FALSE(statements_.dbExecute(sql).Ok());
  EXPECT_EQ(server_.calls.size(), calls) << "nothing is changed by a program that ends";
  EXPECT_EQ(ui.Messages().size(), 1U);
}

TEST_F(StatementsTest, ALossIsToldOnceForEachSessionAndWhatACallerBridgesIsOnlyLogged) {
  Open();
  const Statements::Telling once(statements_, Statements::Tells::kLossOnce);
  server_.Expect("UPDATE x", Lost());
  server_.opens = {Failure("Login failed", 18456).error};
  EXPECT_FALSE(statements_.dbExecute("UPDATE x").Ok());
  statements_.ShowFailure(5400, "Send", *Lost().error);
  EXPECT_EQ(ui.Messages().size(), 1U) << "one cause";
  connection_.Reopen();
  statements_.ShowFailure(5400, "Send", *Lost().error);
  EXPECT_EQ(ui.Messages().size(), 2U) << "the connection was open in between";
  const Statements::Telling quiet(statements_, Statements::Tells::kNothingBridged);
  server_.Expect("UPDATE x", Failure("deadlocked", 1205));
  EXPECT_FALSE(statements_.dbExecute("UPDATE x").Ok());
  EXPECT_EQ(ui.Messages().size(), 2U);
  EXPECT_EQ(LogLines().filter("Database Error - deadlocked").size(), 1);
}

TEST_F(StatementsTest, ALossInsideATransactionIsNotBridgedAndIsToldAfterIt) {
  Open();
  {
    const Transaction transaction(connection_);
    server_.Expect(read_, Lost());
    server_.Expect("UPDATE", Failure("No"));
    Recordset records;
    EXPECT_TRUE(statements_.dbOpenRec(records, read_));
    EXPECT_FALSE(statements_.dbExecute("UPDATE x").Ok());
    EXPECT_TRUE(ui.Messages().empty());
  }
  EXPECT_EQ(server_.Count("open "), 1);
  EXPECT_EQ(ui.MessageTexts(), (QStringList{lostText_, "No\r\n"}));
}

TEST_F(StatementsTest, WithoutAConnectionEverythingFailsWithoutABox) {
  Recordset records;
  EXPECT_TRUE(statements_.dbOpenRec(records, read_));
  EXPECT_FALSE(statements_.dbExecute(read_).Ok());
  EXPECT_EQ(statements_.dbRunCommand(read_, true, CommandType::kText, records), -1);
  EXPECT_FALSE(statements_.dbRunCommandWithParameters("proc_x", {}));
  EXPECT_EQ(statements_.GetNextKeyID("TEMP"), 0);
  EXPECT_EQ(FillListFromQuery(statements_, read_, "Name"), std::nullopt);
  EXPECT_TRUE(server_.calls.isEmpty());
  EXPECT_TRUE(ui.Messages().empty());
  EXPECT_TRUE(ui.Statuses().empty());
  EXPECT_EQ(ui.WaitedFor(), 0);
}

TEST_F(StatementsTest, ACommandGivesItsFirstNumber) {
  Open();
  const std::pair<test::Answer, int> cases[] = {
      {Single(12), 12},
      {Single(2.5), 2},
      {Single(Value(true)), 1},
      {Single(Value(QString("17"))), 17},
      {Single(Value(QString("17 cars"))), 0},
      {Single(Value::Null()), 0},
      {Single(Value(qint64{1} << 40)), 0},
      {Rows({{.name = "n", .type = ValueType::kInt}}, {}), 0},
      {test::Answer{}, 0},
      {Failure("no"), -1},
  };
  for (const auto& [answer, result] : cases) {
    server_.Expect(read_, answer);
    Recordset records;
    EXPECT_EQ(statements_.dbRunCommand(read_, true, CommandType::kStoredProcedure, records), result);
    EXPECT_FALSE(records.IsOpen());
  }
  server_.Expect(read_, Single(3));
  Recordset records;
  EXPECT_EQ(statements_.dbRunCommand(read_, false, CommandType::kText, records), 0);
  EXPECT_EQ(records.Field(0).ToInt(), 3);
}

TEST_F(StatementsTest, FillsParametersInOrderWhateverTheirNames) {
  Open();
  const QString procedure = "proc_addp_Thing";
  EXPECT_TRUE(statements_.dbRunCommandWithParameters(procedure, {Value(1), Value(QString("b")), Value(3)}));
  EXPECT_EQ(server_.calls.last(), "call proc_addp_Thing @Username=1 @EventType=b @TableID=3");

  EXPECT_FALSE(statements_.dbRunCommandWithParameters(procedure, std::vector<Value>(6, Value(1))));
  EXPECT_EQ(ui.MessageTexts(), QStringList{"\r\nItem cannot be found in the collection corresponding to the requested "
                                           "name or ordinal."});
}

TEST_F(StatementsTest, SaysWhichParametersCouldNotBeLoaded) {
  Open();
  server_.describeError = Failure("Could not find stored procedure 'proc_selp_Foo'.").error;
  Command command;
  statements_.PrepareCommand(command, "proc_selp_Foo");
  EXPECT_TRUE(command.parameters.empty());
  EXPECT_EQ(ui.StatusTexts(), QStringList{"Unable to load parameters for procedure: proc_selp_Foo..."});
  EXPECT_FALSE(ui.StatusVisible());
  EXPECT_TRUE(ui.Messages().empty());

  EXPECT_FALSE(statements_.dbRunCommandWithParameters("proc_selp_Foo", {}));
  EXPECT_EQ(ui.MessageTexts(), QStringList{"Could not find procedure 'pselect_Foo'.\r\n"});
}

TEST_F(StatementsTest, ReadsNullByTheTypeOfTheField) {
  Open();
  server_.Expect(read_, Rows({{.name = "Name", .type = ValueType::kText},
                              {.name = "Count", .type = ValueType::kInt},
                              {.name = "Kept", .type = ValueType::kInt}},
                             {{Value::Null(), Value::Null(), Value(5)}}));
  Recordset records;
  ASSERT_FALSE(statements_.dbOpenRec(records, read_));
  EXPECT_EQ(Statements::sysIsNull(records, "name"), Value(QString("")));
  EXPECT_EQ(Statements::sysIsNull(records, "Count"), Value(0));
  EXPECT_EQ(Statements::sysIsNull(records, "Kept").ToInt(), 5);
}

TEST_F(StatementsTest, FillsAListByTheRulesOfItsTag) {
  Open();
  server_.Expect(read_, Rows({{.name = "Name"}, {.name = "ID", .type = ValueType::kInt}},
                             {{Value(QString("Retail trade")), Value(4)}, {Value::Null(), Value(5)}}));
  const ListRules rules = ListRules::FromTag("CAPS:1,MaxLength:6");
  const auto rows = FillListFromQuery(statements_, read_, "Name", "ID", rules);
  ASSERT_TRUE(rows.has_value());
  ASSERT_EQ(rows->size(), 2U);
  EXPECT_EQ((*rows)[0].text, "RETAIL");
  EXPECT_EQ((*rows)[1].text, QString());
  EXPECT_EQ((*rows)[1].data.ToInt(), 5);
}

TEST_F(StatementsTest, SelectsByDataOrByTheFirstMatchingText) {
  const QString text = "Fleet";
  const std::vector<ListRow> rows = {{"Retail", Value(4)}, {text, Value(5)}, {text, Value(6)}, {"Trade", Value(7)}};
  EXPECT_EQ(RowToSelect(rows, text, Value::Null()), 1);
  EXPECT_EQ(RowToSelect(rows, {}, Value(7)), 3);
  EXPECT_EQ(RowToSelect(rows, text, Value(4)), 1) << "the text came later";
  EXPECT_EQ(RowToSelect(rows, "none", Value(9)), -1);
}

}  // namespace
}  // namespace qbx
