#include "database/session.h"

#include <gtest/gtest.h>

#include <thread>

#include "database/odbc/wire_fixture.h"

namespace qbx {
namespace {

using tds::FaultKind;
using tds::FaultMoment;
using test::Wire;

TEST(OdbcSession, WritesAndReadsEveryType) {
  Wire wire;
  wire.session->Execute(
      QStringLiteral("CREATE TABLE T (K int, B bit, I int, F float, M money, W datetime, N nvarchar(50), L ntext)"));
  const QString longText = QString(2'000'000, u'x') + QString::fromUtf8("€ 😀").repeated(20'000);
  const QStringList names = QStringLiteral("K B I F M W N L").split(u' ');
  const std::vector<QString> columns(names.begin(), names.end());
  const std::vector<Value> values = {Value(1),
                                     Value(true),
                                     Value(-2147483647),
                                     Value(0.1),
                                     Value::Decimal(-1234567, 4),
                                     Value(QDateTime(QDate(2024, 2, 29), QTime(23, 59, 58), Qt::UTC)),
                                     Value(QString::fromUtf8("O'Brien €😀")),
                                     Value(longText)};
  wire.session->InsertRow(QStringLiteral("T"), columns, values);
  std::vector<Value> none(columns.size());
  none[0] = Value(2);
  wire.session->InsertRow(QStringLiteral("T"), columns, none);
  Recordset rows = wire.Read("SELECT * FROM T ORDER BY K");
  for (std::size_t column = 0; column < columns.size(); ++column)
    EXPECT_EQ(rows.Field(columns[column]), values[column]) << columns[column].toStdString();
  rows.MoveNext();
  for (std::size_t column = 1; column < columns.size(); ++column)
    EXPECT_TRUE(rows.Field(columns[column]).IsNull()) << columns[column].toStdString();
  wire.session->UpdateRow(QStringLiteral("T"), columns[0], Value(2), std::span(columns).subspan(1),
                          std::span(values).subspan(1));
  EXPECT_EQ(wire.Read("SELECT L FROM T WHERE K = 2").Field(0).ToText(), longText);
  EXPECT_NE(Wire::NumberOf([&] {
              wire.session->UpdateRow(QStringLiteral("T"), columns[0], Value(3), std::span(columns).first(1),
                                      std::span(values).first(1));
            }),
            0);
  wire.session->DeleteRow(QStringLiteral("T"), columns[0], Value(2));
  EXPECT_EQ(wire.Ask("SELECT Count(*) FROM T WHERE N = 'O''Brien €😀'"), QStringLiteral("1"));
  EXPECT_EQ(wire.Ask("SELECT 'it''s C:\\\nand D:\\\r\n'"), QStringLiteral("it's C:\\\nand D:\\\r\n"));
}

TEST(OdbcSession, SendsOnlyTheParametersThatAreSet) {
  Wire wire;
  std::vector<Parameter> list = wire.session->DescribeProcedure(QStringLiteral("PROC_ADDP__LOG"));
  ASSERT_GT(list.size(), 5U);
  EXPECT_EQ(list[0].direction, ParameterDirection::kReturnValue);
  EXPECT_EQ(list[1].name.toStdString(), "@Username");
  EXPECT_EQ(list[1].size, 50);
  const auto set = [&list](const char* name, const Value& value) {
    for (Parameter& parameter : list) {
      if (parameter.name != QLatin1String(name)) continue;
      parameter.value = value;
      parameter.isSet = true;
    }
  };
  set("@Username", Value(QStringLiteral("P'at")));
  EXPECT_NE(Wire::NumberOf([&] { wire.session->Call(QStringLiteral("proc_addp__Log"), list); }), 0);
  set("@EventType", Value(9));
  set("@TableID", Value(0));
  set("@TableKey", Value(QStringLiteral("K")));
  wire.session->Call(QStringLiteral("proc_addp__Log"), list);
  EXPECT_EQ(list[0].value, Value(0));
  EXPECT_EQ(wire.Ask("SELECT Username FROM _Log WHERE Details IS NULL"), QStringLiteral("P'at"));
  // Calls written as statements.
  for (const char* call : {"proc_selp_Results_Counters (1)", "proc_selp_Results_Counters 1", "sp_helpfile"})
    EXPECT_GT(wire.Read(call).Columns().size(), 1U) << call;
  try {
    (void)wire.session->DescribeProcedure(QStringLiteral("proc_that_is_not"));
    FAIL();
  } catch (const DatabaseError& error) {
    EXPECT_EQ(error.Errors().front().number, 2812);
  }
}

TEST(OdbcSession, ReportsTheErrorsOfAllStatementsOfABatch) {
  Wire wire;
  try {
    wire.session->Execute(QStringLiteral("SELECT * FROM Nothing_One; SELECT 1; SELECT * FROM Nothing_Two"));
    FAIL();
  } catch (const DatabaseError& error) {
    QString texts;
    for (const ProviderError& each : error.Errors())
      texts += each.description;
    EXPECT_TRUE(texts.contains(QLatin1String("Nothing_One"))) << texts.toStdString();
  }
  EXPECT_EQ(wire.Ask("SELECT 7; SELECT 8"), QStringLiteral("8"));
}

TEST(OdbcSession, StepsThroughRowsWhileOtherStatementsRun) {
  Wire wire;
  wire.session->Execute(QStringLiteral("CREATE TABLE T (K int, N nvarchar(20))"));
  for (int key = 1; key <= 5; ++key)
    wire.session->Execute(QStringLiteral("INSERT INTO T (K, N) VALUES (%1, 'n%1')").arg(key));
  const std::unique_ptr<RowSource> rows = wire.session->Execute(QStringLiteral("SELECT K, N FROM T ORDER BY K"));
  ASSERT_TRUE(rows->Next() && rows->Next());
  wire.session->Execute(QStringLiteral("DELETE FROM T WHERE K > 2"));
  EXPECT_EQ(rows->At(1).ToValue().ToText(), QStringLiteral("n2"));
  int last = 0;
  while (rows->Next())
    last = static_cast<int>(rows->At(0).integer);
  EXPECT_EQ(last, 5);
  const std::unique_ptr<RowSource> givenUp = wire.session->Execute(QStringLiteral("SELECT K FROM T"));
  ASSERT_TRUE(givenUp->Next());
  wire.session.reset();
  EXPECT_TRUE(givenUp->Next());
}

TEST(OdbcSession, DeletesManyRowsInOneExchange) {
  Wire wire;
  wire.session->Execute(QStringLiteral(
      "CREATE TABLE T (K int); WITH n(k) AS (SELECT 1 UNION ALL SELECT k + 1 FROM n WHERE k < 2000) INSERT INTO T SELECT k FROM n"));
  std::vector<Value> keys;
  for (int key = 2; key <= 2000; ++key)
    keys.emplace_back(key);
  const qint64 before = wire.driver.RoundTripCount();
  wire.session->DeleteRows(QStringLiteral("T"), QStringLiteral("K"), keys);
  EXPECT_EQ(wire.driver.RoundTripCount() - before, 1);
  EXPECT_EQ(wire.Ask("SELECT Sum(K) FROM T"), QStringLiteral("1"));
}

TEST(OdbcSession, StoresAllOrNothingOfATransaction) {
  Wire wire;
  wire.session->Execute(QStringLiteral("CREATE TABLE T (K int)"));
  const QString insert = QStringLiteral("INSERT INTO T VALUES (1)");
  {
    Transaction outer(*wire.session);
    Transaction inner(*wire.session);
    wire.session->Execute(insert);
    inner.Commit();
  }
  EXPECT_EQ(wire.Ask("SELECT Count(*) FROM T"), QStringLiteral("0"));
  wire.session->Begin();
  wire.session->Execute(insert);
  // The server rolls the transaction back, as after a deadlock. Later statements must not be stored on their own.
  EXPECT_NE(
      Wire::NumberOf([&] { wire.session->Execute(QStringLiteral("ROLLBACK TRANSACTION; SELECT * FROM Nothing")); }), 0);
  EXPECT_NE(Wire::NumberOf([&] { wire.session->Execute(insert); }), 0);
  EXPECT_NE(Wire::NumberOf([&] { wire.session->Commit(); }), 0);
  wire.session->Rollback();
  EXPECT_FALSE(wire.session->InTransaction());
  EXPECT_EQ(wire.Ask("SELECT Count(*) FROM T"), QStringLiteral("0"));
}

// Later statements would belong to a transaction that nobody commits.
TEST(OdbcSession, GivesUpAConnectionWhoseTransactionMayBeOpen) {
  for (const char* boundary : {"BEGIN", "COMMIT", "ROLLBACK"}) {
    Wire wire;
    wire.session->Execute(QStringLiteral("CREATE TABLE T (K int)"));
    wire.session->SetCommandTimeout(1);
    wire.server.PlannedFaults().Add({.kind = FaultKind::kSlow,
                                     .moment = FaultMoment::kAnswered,
                                     .match = QString::fromLatin1(boundary),
                                     .milliseconds = 60'000});
    (void)Wire::NumberOf([&] {
      Transaction transaction(*wire.session);
      if (boundary == std::string_view("COMMIT")) transaction.Commit();
    });
    EXPECT_FALSE(wire.session->IsAlive()) << boundary;
    EXPECT_FALSE(wire.session->InTransaction()) << boundary;
    EXPECT_EQ(Wire::NumberOf([&] { wire.session->Execute(QStringLiteral("INSERT INTO T VALUES (1)")); }),
              kUnspecifiedError)
        << boundary;
  }
}

TEST(OdbcSession, LimitsTheTimeOfAStatementWithAllItsRows) {
  Wire wire;
  wire.session->Execute(QStringLiteral(
      "CREATE TABLE T (K int); WITH n(k) AS (SELECT 1 UNION ALL SELECT k + 1 FROM n WHERE k < 2000) INSERT INTO T SELECT k FROM n"));
  wire.session->SetCommandTimeout(1);
  const std::unique_ptr<RowSource> rows = wire.session->Execute(QStringLiteral("SELECT a.K FROM T a, T b, T c"));
  EXPECT_EQ(Wire::NumberOf([&] {
              while (rows->Next()) {
              }
            }),
            kCommandTimedOut);
  EXPECT_EQ(Wire::NumberOf([&] { (void)rows->Next(); }), kCommandTimedOut) << "not the end";
  EXPECT_TRUE(rows->At(0).ToValue().IsNull());
}

TEST(OdbcSession, TellsLostConnectionsTimeOutsAndCancellingsApart) {
  for (const FaultMoment moment : {FaultMoment::kRequest, FaultMoment::kAnswered, FaultMoment::kRow}) {
    for (const FaultKind kind : {FaultKind::kClose, FaultKind::kReset}) {
      Wire wire;
      wire.Plan(kind, moment, "Customers");
      EXPECT_EQ(Wire::NumberOf([&] { (void)wire.Read("SELECT 1 AS Customers UNION ALL SELECT 2 UNION ALL SELECT 3"); }),
                kUnspecifiedError);
      EXPECT_FALSE(wire.session->IsAlive());
      EXPECT_EQ(Wire::NumberOf([&] { (void)wire.Read("SELECT 1"); }), kUnspecifiedError);
    }
  }
  Wire wire;
  wire.session->SetCommandTimeout(1);
  wire.server.PlannedFaults().Add({.kind = FaultKind::kSlow,
                                   .moment = FaultMoment::kRequest,
                                   .match = QStringLiteral("Slow"),
                                   .times = 2,
                                   .milliseconds = 60'000});
  EXPECT_EQ(Wire::NumberOf([&] { (void)wire.Read("SELECT 1 AS Slow"); }), kCommandTimedOut);
  EXPECT_EQ(wire.Ask("SELECT 2"), QStringLiteral("2"));
  wire.session->SetCommandTimeout(30);
  std::atomic<bool> done = false;
  std::thread impatient([&] {
    while (!done)
      wire.session->Interrupt();
  });
  EXPECT_EQ(Wire::NumberOf([&] { (void)wire.Read("SELECT 1 AS Slow"); }), kCommandCancelled);
  done = true;
  impatient.join();
  wire.session->ForgetInterruption();
  EXPECT_EQ(wire.Ask("SELECT 2"), QStringLiteral("2"));
  wire.session->SetCommandTimeout(1);
  wire.Plan(FaultKind::kHang, FaultMoment::kRequest, "Hangs");
  EXPECT_EQ(Wire::NumberOf([&] { (void)wire.Read("SELECT 1 AS Hangs"); }), kCommandTimedOut);
  EXPECT_EQ(Wire::NumberOf([&] { (void)wire.Read("SELECT 2"); }), kUnspecifiedError);
}

}  // namespace
}  // namespace qbx
