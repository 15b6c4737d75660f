// Host databases as files, their procedures, and what the procedures for campaigns and logs keep.

#include "hostdb/host_database.h"

#include <sqlite3.h>

#include "support/embedded_host.h"

namespace qbx {
namespace {

class HostDatabase : public ::testing::Test, public test::EmbeddedHost {
 protected:
  using EmbeddedHost::Run;

  /// Saves a campaign and returns its number.
  qint64 Save(const QString& name) {
    return Ask(QString(
                   "proc_addp_Marketing_Campaign 1, 3, '%1', 'about', '{\\rtf1}', 'subject', 'body', 'text', 1, 1, 0, "
                   "'Audi, Ford', '2025-03-04', '2026-03-04 10:00:00', 100, 1, -1, 0, 1, 0, 0, 1, 0, -1, -1, 2, "
                   "'Trade', '', "
                   "'', '', '2010', '2015', 'TESTER'")
                   .arg(name))
        .ToInt();
  }
  QStringList History() {
    return Rows("SELECT Campaign_Name, Event, UserID FROM Marketing_Campaigns_History ORDER BY ID");
  }
};

TEST_F(HostDatabase, EveryProcedureIsReadAndPrepared) {
  // SQLite only has to understand every statement. So every argument is NULL, and the transaction is rolled back.
  for (const ProcedureFile& procedure : BuiltInProcedures()) {
    SCOPED_TRACE(procedure.name.toStdString());
    const QString name = QString::fromUtf8(procedure.name);
    EXPECT_TRUE(procedure.header.startsWith("CREATE PROCEDURE " + procedure.name));
    connection.Driver().Begin();
    try {
      std::vector<Parameter> parameters = connection.Driver().DescribeProcedure(name);
      for (Parameter& parameter : parameters)
        parameter.isSet = parameter.direction == ParameterDirection::kInput;
      connection.Driver().Call(name, parameters);
    } catch (const DatabaseError& error) {
      // Refused for what it was given (50000, 515 NULL), not for how it is written.
      const int number = error.Errors().empty() ? 0 : error.Errors().front().number;
      EXPECT_TRUE(number == 50000 || number == 515) << error.what();
    }
    connection.Driver().Rollback();
  }
}

TEST_F(HostDatabase, KeysNeverComeTwice) {
  EXPECT_EQ(Ask("proc_sel_NextTEMPID").ToInt(), -1);
  EXPECT_EQ(Ask("proc_sel_NextTEMPID").ToInt(), -2);
  connection.Reopen();
  EXPECT_EQ(Ask("proc_sel_NextTEMPID").ToInt(), -3);
  EXPECT_EQ(Ask("proc_sel_NextCUSTOMERID").ToInt(), 1001);
  Run("INSERT INTO Customers (Customer) VALUES (5000)");
  EXPECT_EQ(Ask("proc_sel_NextCUSTOMERID").ToInt(), 5001);
}

TEST_F(HostDatabase, CampaignsKeepTheirHistory) {
  const qint64 id = Save("Spring");
  const qint64 copy = Ask(QString("proc_copy_Marketing_Campaign %1, 'Autumn', 'TESTER'").arg(id)).ToInt();
  EXPECT_EQ(
      Rows("SELECT Campaign_Name, Step1, Step2, Makes FROM Marketing_Campaigns WHERE ID > " + QString::number(id)),
      QStringList("Autumn|False|False|Audi, Ford"));
  Run(QString("proc_updp_Marketing_Campaign_Details %1, 'Late autumn', NULL, 'ANN'").arg(copy));
  Run(QString("proc_delp_Marketing_Campaign %1, 'ANN'").arg(copy));
  EXPECT_EQ(History(),
            QStringList({"Spring|Campaign added|TESTER", "Autumn|Copied from Spring|TESTER",
                         "Late autumn|Name or description changed|ANN", "Late autumn|Campaign deleted|ANN"}));
  EXPECT_NE(Save("Winter"), copy) << "the number of a deleted campaign must not come back";
}

TEST_F(HostDatabase, ACampaignThatIsGoneIsNotChangedSilently) {
  for (const char* call :
       {"proc_updp_Marketing_Campaign_Details 77, 'x', 'y', 'ANN'", "proc_copy_Marketing_Campaign 77, 'x', 'ANN'"})
    EXPECT_THROW(connection.Driver().Execute(call), DatabaseError) << call;
  EXPECT_EQ(History(), QStringList());
}

TEST_F(HostDatabase, DeletingACampaignTakesItsRowsAlong) {
  const qint64 id = Save("Spring");
  Run(QString("INSERT INTO [Campaign Results] (CampaignID, Send_SMS) VALUES (%1, 1), (9, 1)").arg(id));
  Run(QString("proc_updp_Send_Journal 1, %1, 1, 0, 'TESTER'").arg(id));
  Run(QString("proc_addp_Campaign_Claim %1, 'ANN', 'DESK', 100, '55'").arg(id));
  Run(QString("proc_delp_Marketing_Campaign %1, 'ANN'").arg(id));
  EXPECT_EQ(Rows("SELECT (SELECT COUNT(*) FROM [Campaign Results]), (SELECT COUNT(*) FROM Send_Journal), "
                 "(SELECT COUNT(*) FROM Campaign_Claims), (SELECT COUNT(*) FROM Campaign_Results_Counters)"),
            QStringList("1|0|0|1"));
}

TEST_F(HostDatabase, TheHistoryShowsRunsToo) {
  const qint64 id = Save("Spring");
  clock.AdvanceDays(1);
  Run(QString("proc_Marketing_AddAllCustomers @CampaignID = %1, @UserID = 'BOB', @CampaignType = 'Promotions'")
          .arg(id));
  clock.AdvanceDays(1);
  Run(QString("proc_addp__Marketing_Log 'BOB', 'Processing SMS and Emails', %1").arg(id));
  clock.AdvanceDays(1);
  Run(QString("proc_addp__Marketing_Log 'EVE', 'Not a Manager User', %1").arg(id));
  EXPECT_EQ(Rows("SELECT Campaign_Name, Last_Run FROM Marketing_Campaigns"), QStringList("Spring|06/03/2026 10:20:30"));
  Recordset last = Run("proc_sel_Marketing_Campaigns_History 2");
  ASSERT_EQ(last.RecordCount(), 2);
  EXPECT_EQ(last.Field("Event").ToText(), "Processing SMS and Emails");
  EXPECT_EQ(Run("proc_sel_Marketing_Campaigns_History 0").RecordCount(), 4);
  EXPECT_EQ(Run("proc_sel_Marketing_Campaigns_History 4").RecordCount(), 4);
  EXPECT_EQ(History().at(1), "Spring|Query run: Promotions|BOB");
}

TEST(HostDatabaseFile, AFileThatIsThereIsOnlyReplacedWhenAsked) {
  const test::TempFolder folder;
  const QString path = folder.Write("Garage.db", "precious");
  EXPECT_TRUE(CreateHostDatabase(path, ExistingFile::kRefuse).has_value());
  EXPECT_EQ(folder.Read("Garage.db"), QByteArray("precious"));
  const auto giveUp = [](sqlite3*) { return HostDatabaseProblem("no"); };
  EXPECT_EQ(CreateHostDatabase(path, ExistingFile::kReplace, giveUp), HostDatabaseProblem("no"));
  EXPECT_EQ(folder.Read("Garage.db"), QByteArray("precious"));
  EXPECT_EQ(CreateHostDatabase(path, ExistingFile::kReplace), std::nullopt);
  EXPECT_TRUE(folder.Read("Garage.db").startsWith("SQLite format 3"));
  EXPECT_TRUE(CreateHostDatabase(folder.File("no/such/folder.db"), ExistingFile::kRefuse).has_value());
  EXPECT_EQ(folder.Names(), QStringList("Garage.db"));
}

TEST_F(HostDatabase, ADatabaseInUseIsNotReplaced) {
  const QString path = folder.File("Garage.db");
  EXPECT_TRUE(CreateHostDatabase(path, ExistingFile::kReplace).has_value());
  Save("Still here");
  connection.Close();
  EXPECT_EQ(CreateHostDatabase(path, ExistingFile::kReplace), std::nullopt);
  connection.Reopen();
  EXPECT_EQ(Run("proc_sel_Marketing_Campaigns").RecordCount(), 0);
}

TEST_F(HostDatabase, ObjectsAreRenewedOnlyWhenTheirTextChanges) {
  const auto look = [this] {
    return Rows(
        "SELECT (SELECT COUNT(*) FROM _Procedures WHERE Name = 'proc__OptionVersion'), "
        "(SELECT COUNT(*) FROM sqlite_master WHERE name = 'Campaign_Results_Count_Move'), "
        "(SELECT COUNT(*) FROM sqlite_master WHERE name IN ('Of_The_Host', 'Ours_Once'))");
  };
  const auto reopen = [this](const char* installed) {
    Run(QString("UPDATE _Version SET Objects_Fingerprint = 'another'; UPDATE _Installed SET Fingerprint = 'x' WHERE ") +
        installed);
    connection.Reopen();
  };
  Run("DELETE FROM _Procedures WHERE Name = 'proc__OptionVersion'; DROP TRIGGER Campaign_Results_Count_Move; "
      "CREATE VIEW Of_The_Host AS SELECT 1 AS N; CREATE VIEW Ours_Once AS SELECT 2 AS N; "
      "INSERT INTO _Procedures VALUES ('proc_of_the_host', 'CREATE PROCEDURE proc_of_the_host', 'SELECT 5 AS N;', 1)");
  connection.Reopen();
  EXPECT_EQ(look(), QStringList("0|0|2"));
  reopen("Name = 'proc_selp__Option'");
  EXPECT_EQ(look(), QStringList("0|0|2")) << "what was taken away stays away while our text is the same";
  Run("UPDATE _Version SET Objects_Set = Objects_Set + 1");
  reopen("TRUE");
  EXPECT_EQ(look(), QStringList("0|0|2")) << "a newer program installed them";
  Run("UPDATE _Version SET Objects_Set = Objects_Set - 2");
  Run("INSERT INTO _Installed VALUES ('view', 'Ours_Once', 'a text that the program no longer brings')");
  reopen("Name IN ('proc__OptionVersion', 'Campaign_Results_Count_Move')");
  EXPECT_EQ(look(), QStringList("1|1|1"));
  EXPECT_EQ(Ask("proc_of_the_host").ToInt(), 5);
}

}  // namespace
}  // namespace qbx
