// Statements as they are written for SQL Server, run on a database.

#include <gtest/gtest.h>

#include "test_server.h"

namespace qbx {
namespace {

struct StatementCase {
  const char* batch;
  const char* result;  // first column of the first row of its result, or of `then`
  const char* then = nullptr;
};

/// Without it GoogleTest names a case after its bytes, which contain addresses, so the name would differ between runs.
void PrintTo(const StatementCase& test, std::ostream* out) {
  *out << test.batch;
}

class TranslationTest : public testing::TestWithParam<StatementCase> {};

TEST_P(TranslationTest, RunsAsOnTheServer) {
  TestServer server;
  const auto session = server.Connect();
  const StatementCase& test = GetParam();
  std::string result;
  ASSERT_EQ(FailureOf([&] {
              result = FirstText(session->Execute(QString::fromUtf8(test.batch)));
              if (test.then != nullptr) result = FirstText(session->Execute(QString::fromUtf8(test.then)));
            }),
            "");
  EXPECT_EQ(result, test.result);
}

INSTANTIATE_TEST_SUITE_P(
    Statements, TranslationTest,
    testing::Values(
        StatementCase{"SELECT Customer FROM Customers (NOLOCK) WHERE Type_ID = 2", "C2"},
        StatementCase{"SELECT Customer FROM dbo.[Customers] WITH (NOLOCK, READPAST) WHERE [Lastname] = N'ADAMS'", "C2"},
        StatementCase{"SELECT Customer FROM Customers WHERE Lastname = 'öZTÜRK'", "C1"},
        StatementCase{"SELECT Customer FROM Customers WHERE Lastname = 'adams  ' AND Customer IN ('c2 ', 'x')", "C2"},
        StatementCase{"UPDATE Customers SET Lastname = '   ' WHERE Customer <> 'C2 '", "1",
                      "SELECT COUNT(*) FROM Customers WHERE Lastname <> ''"},
        StatementCase{"SELECT TOP 1 Customer FROM Customers ORDER BY Customer DESC;", "C3"},
        StatementCase{"SELECT Count(1) FROM (SELECT DISTINCT TOP (2) Customer FROM Customers) AS t", "2"},
        StatementCase{"SELECT Count(*) FROM [Campaign Results] WHERE IsNull(Can_Send_SMS, 0) = 1", "1"},
        StatementCase{"SELECT Count(*) FROM [Campaign Results] WHERE (Mobile <> '') AND (Len(Mobile) > 5)", "1"},
        StatementCase{"SELECT Count(1) FROM [Campaign Results] WHERE (CHARINDEX('@', Email) < 2)", "2"},
        StatementCase{"SELECT CharIndex('B', 'abab', 3)", "4"}, StatementCase{"SELECT Len('ab€𝄞  ')", "5"},
        StatementCase{"SELECT GetDate()", "2024-03-05 14:06:07.890"},
        StatementCase{"SELECT 'it''s' + ' ' + N'fine' -- a remark", "it's fine"},
        StatementCase{"SELECT CAST(7.9 AS int) /* 'x */ WHERE CAST('3' AS int) = 3", "7"},
        StatementCase{
            "UPDATE [Campaign Results] SET Send_SMS = 1 WHERE  CampaignID = 12 AND IsNull(Can_Send_SMS, 0) = 1; UPDATE "
            "[Campaign Results] SET Send_SMS = 0 WHERE (Send_SMS = 1 OR Customer = 'c2') AND CampaignID = 13",
            "1", "SELECT SUM(Send_SMS) FROM [Campaign Results]"},
        StatementCase{"INSERT Customers (Customer, Lastname) VALUES ('C9', 'O''Neil;[x]')", "O'Neil;[x]",
                      "SELECT Lastname FROM Customers WHERE Customer = 'C9'"},
        StatementCase{"DELETE [Campaign Results] WHERE CampaignID = -13 OR CampaignID = 13", "2",
                      "SELECT COUNT(*) FROM [Campaign Results]"},
        StatementCase{"SELECT Customer FROM Customers; DELETE FROM Customers WHERE Customer = 'C1'", "C1"},
        StatementCase{"BEGIN TRAN; DELETE FROM Customers; ROLLBACK", "3", "SELECT COUNT(*) FROM Customers"},
        StatementCase{"proc_list", "C1"}, StatementCase{"proc_list 2;", "C1"},
        StatementCase{"EXEC dbo.proc_LIST @n = 1", "C1"}, StatementCase{"proc_add ('N1')", "N1"},
        StatementCase{"proc_add 'N2', 2, NULL, 1", "2", "SELECT Type_ID FROM Customers WHERE Customer = 'n2'"},
        StatementCase{"EXEC proc_add @Type = 2, @Customer = 'N3'", "N3"}, StatementCase{"proc_sel_NextTEMPID", "-1"},
        StatementCase{"SELECT DATABASEPROPERTYEX('garage', 'Status')", "ONLINE"},
        StatementCase{"SELECT DATABASEPROPERTYEX('Absent', 'Status')", ""}));

struct ErrorCase {
  const char* batch;
  const char* failure;
};

void PrintTo(const ErrorCase& test, std::ostream* out) {
  *out << test.batch;
}

class StatementErrorTest : public testing::TestWithParam<ErrorCase> {};

TEST_P(StatementErrorTest, HasTheNumberAndWordingOfTheServer) {
  TestServer server;
  const auto session = server.Connect();
  EXPECT_EQ(FailureOf([&] { session->Execute(QString::fromUtf8(GetParam().batch)); }), GetParam().failure);
}

INSTANTIATE_TEST_SUITE_P(
    Errors, StatementErrorTest,
    testing::Values(
        ErrorCase{"SELECT * FROM Nowhere", "208: Invalid object name 'Nowhere'."},
        ErrorCase{"SELECT [No Such] FROM Customers", "207: Invalid column name 'No Such'."},
        ErrorCase{"INSERT INTO Customers (Nope) VALUES (1)", "207: Invalid column name 'Nope'."},
        ErrorCase{"SELECT * FORM Customers", "102: Incorrect syntax near 'FORM'."},
        ErrorCase{"SELCT * FROM Customers", "102: Incorrect syntax near '*'."},
        ErrorCase{"proc_list (1", "102: Incorrect syntax near '1'."},
        ErrorCase{"SELECT TOP 5 PERCENT Customer FROM Customers", "102: Incorrect syntax near 'PERCENT'."},
        ErrorCase{"SELECT * FROM Customers WHERE Customer = ?", "102: Incorrect syntax near '?'."},
        ErrorCase{"SELECT 'open", "105: Unclosed quotation mark after the character string 'open'."},
        ErrorCase{"SELECT @x", "137: Must declare the scalar variable '@x'."},
        ErrorCase{"SELECT Convert(Customer) FROM Customers",
                  "195: 'Convert' is not a recognized built-in function name."},
        ErrorCase{"proc_selp_Foo (1)", "2812: Could not find stored procedure 'proc_selp_Foo'."},
        ErrorCase{"proc_add",
                  "201: Procedure or function 'proc_add' expects parameter '@Customer', which was not supplied."},
        ErrorCase{"proc_list 1, 2", "8144: Procedure or function proc_list has too many arguments specified."},
        ErrorCase{"EXEC proc_list @m = 2", "8145: @m is not a parameter for procedure proc_list."},
        ErrorCase{"proc_list 'many'", "8114: Error converting data type nvarchar to int."},
        ErrorCase{"proc_add 'A', 1, '31.12.99'", "8114: Error converting data type nvarchar to datetime."},
        ErrorCase{"proc_add 'A', 40000", "220: Arithmetic overflow error for data type smallint, value = 40000."},
        ErrorCase{"proc_add 'toolong'", "8152,3621: String or binary data would be truncated."},
        ErrorCase{"proc_raise", "50001: Not 'today'."},
        ErrorCase{"INSERT INTO Customers (Customer) VALUES ('c1')",
                  "2627,3621: Violation of PRIMARY KEY constraint 'PK_Customers'. Cannot insert duplicate key in "
                  "object 'Customers'."},
        ErrorCase{"INSERT INTO Customer_Types VALUES (3, NULL)",
                  "515,3621: Cannot insert the value NULL into column 'Description', table "
                  "'Garage.dbo.Customer_Types'; column does not "
                  "allow nulls. INSERT fails."},
        ErrorCase{
            "UPDATE Customers SET Rating = 2 WHERE Customer = 'C3'",
            "547,3621: UPDATE statement conflicted with CHECK constraint 'CK_Rating'. The conflict occurred in database 'Garage'."},
        ErrorCase{"ALTER DATABASE [Absent] SET ONLINE",
                  "5011: User does not have permission to alter database 'Absent', the database does not exist, or the "
                  "database is not in a "
                  "state that allows access checks."}));

TEST(StatementError, LeavesNothingBehindAndCarriesThePrefix) {
  TestServer server;
  const auto session = server.Connect();
  try {
    session->Execute("INSERT INTO Customers (Customer) VALUES ('C7'), ('c1')");
    FAIL();
  } catch (const DatabaseError& error) {
    EXPECT_EQ(error.Number(), kConstraintFailed);
    EXPECT_TRUE(error.Errors()[0].description.startsWith("[SQL Server]Violation"));
    EXPECT_EQ(error.Errors()[0].sqlState, "23000");
  }
  EXPECT_EQ(FirstText(session->Execute("SELECT COUNT(*) FROM Customers")), "3");
  EXPECT_FALSE(session->InTransaction());
}

TEST(StatementError, ProcedureIsAllOrNothing) {
  TestServer server;
  const auto session = server.Connect();
  EXPECT_TRUE(FailureOf([&] { session->Execute("proc_two 99"); }).starts_with("2627"));
  EXPECT_EQ(FirstText(session->Execute("SELECT COUNT(*) FROM _Keys")), "1");
}

}  // namespace
}  // namespace qbx
