// Recordsets over real results.

#include "database/recordset.h"

#include <gtest/gtest.h>

#include "test_server.h"

namespace qbx {
namespace {

class RecordsetTest : public testing::Test {
 protected:
  RecordsetTest() {
    server.Run(
        "CREATE TABLE Items(ID integer primary key, Name nvarchar(20) COLLATE NOCASE, Price money, Note text);"
        "INSERT INTO Items VALUES (1, 'pear', 10, NULL), (2, 'Apple', 9.5, 'x'), (3, NULL, NULL, 'y'), (4, 'apple', "
        "100, ''),"
        " (5, 'Éclair', -1, 'z')");
    session = server.Connect();
  }
  Recordset Open(const QString& sql = "SELECT * FROM Items ORDER BY ID") {
    Recordset rows = Recordset::ReadAll(session->Execute(sql));
    rows.SetWritable(*session, "Items", "ID");
    rows.SetSource([this, sql] { return session->Execute(sql); });
    return rows;
  }
  static std::string Ids(Recordset& rows) {
    std::string ids;
    for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext())
      ids += rows.Field("id").ToText().toStdString();
    return ids;
  }
  std::string InDatabase() {
    Recordset rows = Recordset::Forward(session->Execute("SELECT ID FROM Items ORDER BY ID"));
    return Ids(rows);
  }

  TestServer server;
  std::unique_ptr<Session> session;
};

TEST_F(RecordsetTest, SortsNullsFirstTextWithoutCaseNumbersByValueAndStably) {
  Recordset rows = Open();
  rows.Sort(rows.ColumnIndex("NAME"), false);
  EXPECT_EQ(Ids(rows), "32415");
  rows.Sort(rows.ColumnIndex("Name"), true);
  EXPECT_EQ(Ids(rows), "51243");
  rows.Sort(rows.ColumnIndex("Price"), false);
  EXPECT_EQ(Ids(rows), "35214");
}

TEST_F(RecordsetTest, FilterAndSortStayThroughARequery) {
  Recordset rows = Open();
  rows.Filter([](const StoredRow& row) { return row.At(3).type != ValueType::kNull; });
  rows.Sort(2, true);
  EXPECT_EQ(Ids(rows), "4253");
  EXPECT_EQ(rows.RecordCount(), 4);
  session->Execute("INSERT INTO Items VALUES (6, 'fig', 50, 'n'), (7, 'kiwi', 60, NULL)");
  Recordset clone = rows.Clone();
  rows.Requery();
  EXPECT_EQ(Ids(rows), "46253");
  EXPECT_EQ(Ids(clone), "4253");
  rows.Close();
  clone.Requery();
  EXPECT_EQ(Ids(clone), "46253") << "the filter of a clone looks at the clone's rows";
  rows = Open();
  EXPECT_EQ(rows.RecordCount(), 7);
}

TEST_F(RecordsetTest, DeletesInItselfTheDatabaseAndClones) {
  Recordset rows = Open();
  Recordset clone = rows.Clone();
  clone.MoveTo(3);
  rows.MoveTo(1);
  rows.Delete();
  EXPECT_EQ(rows.Field(0), Value(3));
  rows.Delete();
  EXPECT_EQ(rows.Field(0), Value(4));
  EXPECT_EQ(rows.Position(), 1);
  EXPECT_EQ(clone.Field(0), Value(4));
  EXPECT_EQ(clone.Position(), 1);
  EXPECT_EQ(clone.RecordCount(), 3);
  EXPECT_EQ(clone.At(2, 0).integer, 5);
  EXPECT_EQ(InDatabase(), "145");
}

TEST_F(RecordsetTest, RefusedDeleteKeepsTheRow) {
  server.Run("CREATE TRIGGER Refuse BEFORE DELETE ON Items BEGIN SELECT RAISE(ABORT, 'still in use'); END");
  Recordset rows = Open();
  EXPECT_NE(FailureOf([&] { rows.Delete(); }), "");
  EXPECT_EQ(rows.RecordCount(), 5);
  EXPECT_EQ(rows.Field(0), Value(1));
}

TEST_F(RecordsetTest, AddsAndChangesRows) {
  Recordset rows = Open("SELECT TOP 1 * FROM Items");
  for (int i = 0; i < 2; ++i) {
    rows.AddNew();
    EXPECT_TRUE(rows.Field("Name").IsNull());
    rows.Set("name", QString("old"));
    rows.Set("Name", QString("new"));
    EXPECT_EQ(rows.Field("Name"), Value(QString("new")));
    rows.Update();
  }
  EXPECT_EQ(InDatabase(), "1234567");
  rows.Set("Note", QString(300'000, QLatin1Char('n')));
  rows.Set("Price", Value());
  rows.Update();
  EXPECT_EQ(rows.Field("Note").ToText().size(), 300'000);
  EXPECT_EQ(FirstText(session->Execute("SELECT Len(Note) FROM Items WHERE ID = 1 AND Price IS NULL")), "300000");
  EXPECT_EQ(FailureOf([&] { rows.Set("Colour", 1); }),
            ": Item cannot be found in the collection corresponding to the requested name or ordinal.");
}

TEST_F(RecordsetTest, ForgetsChangesThatWereRefusedOrLeftBehind) {
  server.Run("CREATE UNIQUE INDEX Names ON Items(Name, Note)");
  const QString name = "Name";
  Recordset rows = Open();
  rows.Set(name, QString("Apple"));
  rows.Set("Note", QString("x"));
  EXPECT_NE(FailureOf([&] { rows.Update(); }), "");
  EXPECT_EQ(rows.Field(name), Value(QString("pear")));
  rows.Update();

  rows.AddNew();
  EXPECT_EQ(rows.Field(name), Value());
  rows.MoveNext();
  EXPECT_EQ(rows.Field(name), Value(QString("Apple"))) << "not the new row";
  for (const std::function<void()>& leave : std::initializer_list<std::function<void()>>{
           [&] { rows.MoveTo(2); }, [&] { rows.MoveFirst(); }, [&] { rows.MoveNext(); }, [&] { rows.Requery(); }}) {
    rows.Set(name, QString("left"));
    leave();
    rows.Update();
  }
  EXPECT_EQ(FirstText(session->Execute("SELECT count(*) FROM Items WHERE Name = 'left'")), "0");
}

TEST_F(RecordsetTest, KeepsEveryCellOfALargeResult) {
  session->Execute(
      "INSERT INTO Items (Name, Price, Note) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
      "5000) "
      "SELECT 'n' || i, i, CASE i % 500 WHEN 0 THEN replace(hex(zeroblob(200000)), '0', 'z') ELSE i END FROM n");
  const Recordset rows = Open();
  ASSERT_EQ(rows.RecordCount(), 5005);
  for (qint64 row = 5; row < rows.RecordCount(); ++row) {
    const qint64 i = row - 4;
    ASSERT_EQ(rows.At(row, 1).utf8, "n" + std::to_string(i));
    ASSERT_EQ(rows.At(row, 2).ToValue(), Value::Decimal(i * 10000, 4));
    ASSERT_EQ(rows.At(row, 3).utf8.size(), i % 500 == 0 ? 400'000 : std::to_string(i).size());
  }
}

TEST_F(RecordsetTest, ForwardOnlyFetchesWhatIsAskedFor) {
  session->SetCommandTimeout(1);  // reading the endless result would run into it
  Recordset rows = Recordset::Forward(
      session->Execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT i FROM n"));
  EXPECT_EQ(rows.RecordCount(), -1);
  rows.MoveFirst();
  EXPECT_EQ(rows.Field(0), Value(1));
  rows.MoveNext();
  EXPECT_EQ(rows.Field("I"), Value(2));
  EXPECT_NE(FailureOf([&] { rows.MoveFirst(); }), "");
  rows.Close();
  EXPECT_TRUE(rows.Eof());
  EXPECT_FALSE(rows.IsOpen());
}

TEST_F(RecordsetTest, EmptyAndClosedOnesHaveNothing) {
  Recordset empty = Open("SELECT * FROM Items WHERE ID = 99");
  EXPECT_TRUE(empty.Eof());
  EXPECT_EQ(empty.RecordCount(), 0);
  EXPECT_TRUE(empty.Field("Name").IsNull());
  EXPECT_NE(FailureOf([&] { empty.Delete(); }), "");
  Recordset closed;
  EXPECT_TRUE(closed.Eof());
  EXPECT_EQ(closed.ColumnIndex("Name"), -1);
  EXPECT_TRUE(closed.Columns().empty());
}

}  // namespace
}  // namespace qbx
