#include "database/error_interpretation.h"

#include "database/database_fixture.h"

namespace qbx {
namespace {

class ErrorInterpretationTest : public test::DatabaseFixture {
 protected:
  /// Reports a failure with these provider texts.
  QString Report(const QStringList& texts, const QString& pendingText = "pending", int number = 1) {
    std::vector<ProviderError> list;
    for (const QString& text : texts)
      list.push_back({0, {}, text});
    const DatabaseError error(number, pendingText, list);
    connection_.KeepErrors(error);
    return interpretation_.ReportDatabaseError(&connection_, "dbExecute", "SQL", error);
  }
};

TEST_F(ErrorInterpretationTest, WordsWhatTheServerSays) {
  Open();
  const QString prefix = "[Vendor][Driver][Server]";
  const QString taken = "Violation of PRIMARY KEY constraint 'PK_X'. Cannot insert duplicate key.";
  const QString terminated = "The statement has been terminated.";
  const QString known = "The Reference value entered already exists for this record type.";
  const std::pair<QStringList, QString> cases[] = {
      {{prefix + "Procedure 'proc_x' expects parameter '@CustomerID', which was not supplied."},
       "\r\nMissing Value 'CustomerID'\r\n"},
      {{"INSERT statement conflicted with COLUMN FOREIGN KEY constraint 'FK_1'. The conflict occurred in "
        "database 'QBX', table 'Customers', column 'Type_ID'."},
       "The value entered for 'Type_ID' does not exist in the table 'Customers', please enter a valid "
       "value in 'Type_ID' and try again."},
      {{taken}, known},
      {{taken, terminated}, known + "\r\n\r\nThe operation has been cancelled."},
      {{terminated, taken}, known},
      {{"Line 1: Incorrect syntax near 'FORM'."}, "Incorrect syntax  near 'FORM'\r\n"},
      {{"First", "Syntax error in FROM clause"}, "Incorrect database query specified. First\r\n\r\n"},
      {{"DELETE statement conflicted with COLUMN REFERENCE constraint 'FK_2'. The conflict occurred in "
        "database 'QBX', table 'Vehicles', column 'Owner_ID'."},
       "The record you attempted to delete cannot be deleted as it has references to 'Vehicles', "
       "specifically relating to the column 'Owner_ID'."},
      {{prefix + "Could not find stored procedure 'proc_selp_Foo'."}, "Could not find procedure 'pselect_Foo'.\r\n"},
      {{"[A][B]one", "two"}, "one\r\n\r\n\r\ntwo\r\n"},
      {{"proc_delp_A proc_sel_B proc_updp_C table_keys"}, "pdelete_A select_B pupdate_C table_ID_\r\n"},
      {{"x expects parameter Y"}, "\r\nMissing Value ''\r\n"},
  };
  for (const auto& [texts, message] : cases) {
    ui.Clear();
    EXPECT_EQ(Report(texts), message);
    EXPECT_EQ(ui.MessageTexts(), QStringList{message});
    EXPECT_EQ(LogLines().last(), QString("Database Error - ") + message);
    EXPECT_TRUE(server_.calls.last().endsWith(QString("@TableKey=DB @Details=") + message.trimmed().left(80)));
  }
}

TEST_F(ErrorInterpretationTest, FallsBackToThePendingError) {
  EXPECT_EQ(Report({}), "\r\npending");
  EXPECT_EQ(Report({}, "Application uses a value of the wrong type for the current operation.", 3421),
            "Database Update: \r\nApplication uses a value of the wrong type for the current operation."
            "\r\n\r\nA data field may not be filled in correctly, is blank, or has more data than "
            "expected.\r\n\r\nPlease ensure that all the required fields have been entered.");
}

TEST_F(ErrorInterpretationTest, AddsAdviceBehindTheLoggedMessage) {
  context_.DatabaseVersion = 98;
  EXPECT_EQ(Report({"Timeout expired"}),
            "\r\nThe operation did not complete in the time expected."
            "\r\rA record may be required which may be being edited and which can't be updated at this "
            "time.\r\rThis system may need updating! Please do a Check for Updates.");
  EXPECT_EQ(LogLines().first(), "Database Error - \r\nThe operation did not complete in the time expected.");
  context_.DatabaseVersion = 6;
  EXPECT_EQ(Report({"Lock request time out period exceeded."}),
            "Lock request time out period exceeded.\r\n\r\rA record may be required which may be being "
            "edited and which can't be updated at this time.");
}

TEST_F(ErrorInterpretationTest, OffersToQuitWhenTheNetworkIsGone) {
  const QStringList lost = {"[DBNETLIB]General network error. Check your network documentation."};
  for (const MessageAnswer answer : {MessageAnswer::kNo, MessageAnswer::kYes}) {
    EXPECT_FALSE(ui.QuitRequested());
    ui.Answer("\r\n\r\rDatabase connection lost. Recommended to quit the program. OK to quit?", answer);
    Report(lost);
  }
  EXPECT_TRUE(ui.QuitRequested());
  EXPECT_EQ(ui.Messages().size(), 2U) << "nothing but the questions";
  EXPECT_EQ(ui.Messages()[0].question, Question::kQuitAfterLostConnection);
  EXPECT_FALSE(lastError_.DbErrorShown);
}

TEST_F(ErrorInterpretationTest, WithoutAConnectionOnlyTheStatusBoxCloses) {
  status.ShowStatus("Working");
  const DatabaseError error(1, "x", {});
  EXPECT_EQ(interpretation_.ReportDatabaseError(nullptr, {}, {}, error), QString());
  EXPECT_FALSE(ui.StatusVisible());
  EXPECT_TRUE(ui.Messages().empty());
  EXPECT_TRUE(LogLines().isEmpty());
}

TEST(TextBetween, IgnoresCaseAndKeepsTheText) {
  EXPECT_EQ(TextBetween("in Table 'Customers', x", "TABLE '", "'"), "Customers");
  EXPECT_EQ(TextBetween("table 'open", "table '", "'"), QString());
  EXPECT_EQ(TextBetween("none", "x", "e"), QString());
}

}  // namespace
}  // namespace qbx
