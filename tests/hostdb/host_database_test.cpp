// Host databases as files, their procedures, and what the procedures for campaigns and logs keep.

#include "hostdb/host_database.h"

#include <sqlite3.h>

#include <QFile>

#include "support/embedded_host.h"

namespace qbx {
namespace {

class HostDatabase : public ::testing::Test, public test::EmbeddedHost {
 protected:
  using EmbeddedHost::Run;

  /// Saves a campaign and returns its number.
  qint64 Save(const QString& name) {
    return Ask(QStringLiteral(
                   "proc_addp_Marketing_Campaign 1, 3, '%1', 'about', '{\\rtf1}', 'subject', 'body', 'text', 1, 1, 0, "
                   "'Audi, Ford', '2025-03-04', '2026-03-04 10:00:00', 100, 1, -1, 0, 1, 0, 0, 1, 0, -1, -1, 2, "
                   "'Trade', '', "
                   "'', '', '2010', '2015', 'TESTER'")
                   .arg(name))
        .ToInt();
  }
  QStringList History() {
    return Rows(QStringLiteral("SELECT Campaign_Name, Event, UserID FROM Marketing_Campaigns_History ORDER BY ID"));
  }
};

TEST_F(HostDatabase, EveryProcedureIsReadAndPrepared) {
  // A transaction that is rolled back, and NULL wherever nothing better is known: it is enough that SQLite understands every statement.
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

TEST_F(HostDatabase, StartsEmptyWithOneCompany) {
  EXPECT_EQ(Rows(QStringLiteral("proc__OptionVersion")), QStringList(QStringLiteral("999|6")));
  Recordset options = Run(QStringLiteral("proc_selp__Option('a')"));
  ASSERT_EQ(options.RecordCount(), 1);
  for (const char* key :
       {"Company", "CompanyCode", "CompanyID", "SMTP_Password", "Ireland_NCT", "ShowJobType", "MOT_Reminder_Name"}) {
    ASSERT_GE(options.ColumnIndex(QLatin1String(key)), 0) << key;
    EXPECT_TRUE(options.Field(QLatin1String(key)).IsNull()) << key;
  }
  EXPECT_EQ(Run(QStringLiteral("proc_selp__Option('B')")).RecordCount(), 0);
  EXPECT_EQ(Ask(QStringLiteral("SELECT COUNT(*) FROM Customers")).ToInt(), 0);
}

TEST_F(HostDatabase, UsersGetOptionsOnce) {
  EXPECT_TRUE(Run(QStringLiteral("proc_selp__OptionsUser ( 'Zoë' )")).Eof());
  Run(QStringLiteral("proc_addp__OptionsUser ( 'Zoë' )"));
  Run(QStringLiteral("UPDATE _OptionsUser SET GRID_LINEFONT_SIZE = 12"));
  Run(QStringLiteral("proc_addp__OptionsUser ( 'ZOË' )"));
  Recordset options = Run(QStringLiteral("proc_selp__OptionsUser ( 'ZOË' )"));
  ASSERT_EQ(options.RecordCount(), 1);
  EXPECT_EQ(options.Field(QStringLiteral("GRID_LINEFONT_SIZE")).ToInt(), 12);
  EXPECT_NE(options.Field(QStringLiteral("GRID_ODD_BACKCOLOUR")), options.Field(QStringLiteral("GRID_ODD_FORECOLOUR")))
      << "text must be readable before anybody chose colours";
}

TEST_F(HostDatabase, KeysNeverComeTwice) {
  EXPECT_EQ(Ask(QStringLiteral("proc_sel_NextTEMPID")).ToInt(), -1);
  EXPECT_EQ(Ask(QStringLiteral("proc_sel_NextTEMPID")).ToInt(), -2);
  connection.Reopen();
  EXPECT_EQ(Ask(QStringLiteral("proc_sel_NextTEMPID")).ToInt(), -3);
  EXPECT_EQ(Ask(QStringLiteral("proc_sel_NextCUSTOMERID")).ToInt(), 1001);
  Run(QStringLiteral("INSERT INTO Customers (Customer) VALUES (5000)"));
  EXPECT_EQ(Ask(QStringLiteral("proc_sel_NextCUSTOMERID")).ToInt(), 5001);
}

TEST_F(HostDatabase, CampaignsKeepEveryFieldAndTheirHistory) {
  const qint64 id = Save(QStringLiteral("Spring"));
  EXPECT_EQ(Rows(QStringLiteral("proc_selp_Marketing_Campaign (%1)").arg(id)),
            QStringList(
                QStringLiteral("%1|1|3|Spring|about|{\\rtf1}|subject|body|text|True|True|False|Audi, Ford|04/03/2025|"
                               "04/03/2026 10:00:00|100|1|-1|False|True|False|False|True|0|-1|-1|2|Trade||||2010|2015|"
                               "04/03/2026 10:20:30|TESTER|NULL")
                    .arg(id)));
  const qint64 copy = Ask(QStringLiteral("proc_copy_Marketing_Campaign %1, 'Autumn', 'TESTER'").arg(id)).ToInt();
  EXPECT_NE(copy, id);
  EXPECT_EQ(
      Rows(QStringLiteral("SELECT Campaign_Name, Step1, Step2, Makes, SMS, ValueYearOfManufacture2, Created_By FROM "
                          "Marketing_Campaigns WHERE ID = %1")
               .arg(copy)),
      QStringList(QStringLiteral("Autumn|False|False|Audi, Ford|text|2015|TESTER")));
  Run(QStringLiteral("proc_updp_Marketing_Campaign_Details %1, 'Late autumn', NULL, 'ANN'").arg(copy));
  Run(QStringLiteral("proc_delp_Marketing_Campaign %1, 'ANN'").arg(copy));
  EXPECT_EQ(History(), QStringList({QStringLiteral("Spring|Campaign added|TESTER"),
                                    QStringLiteral("Autumn|Copied from Spring|TESTER"),
                                    QStringLiteral("Late autumn|Name or description changed|ANN"),
                                    QStringLiteral("Late autumn|Campaign deleted|ANN")}));
  EXPECT_NE(Save(QStringLiteral("Winter")), copy) << "the number of a deleted campaign must not come back";
}

TEST_F(HostDatabase, ACampaignThatIsGoneIsNotChangedSilently) {
  for (const char* call :
       {"proc_updp_Marketing_Campaign_Details 77, 'x', 'y', 'ANN'", "proc_copy_Marketing_Campaign 77, 'x', 'ANN'"})
    EXPECT_THROW(connection.Driver().Execute(QLatin1String(call)), DatabaseError) << call;
  EXPECT_EQ(History(), QStringList());
}

TEST_F(HostDatabase, DeletingACampaignTakesItsRowsAlong) {
  const qint64 id = Save(QStringLiteral("Spring"));
  Run(QStringLiteral("INSERT INTO [Campaign Results] (CampaignID, Send_SMS) VALUES (%1, 1), (9, 1)").arg(id));
  Run(QStringLiteral("proc_updp_Send_Journal 1, %1, 1, 0, 'TESTER'").arg(id));
  Run(QStringLiteral("proc_addp_Campaign_Claim %1, 'ANN', 'DESK', 100, '55'").arg(id));
  Run(QStringLiteral("proc_delp_Marketing_Campaign %1, 'ANN'").arg(id));
  EXPECT_EQ(
      Rows(QStringLiteral("SELECT (SELECT COUNT(*) FROM [Campaign Results]), (SELECT COUNT(*) FROM Send_Journal), "
                          "(SELECT COUNT(*) FROM Campaign_Claims), (SELECT COUNT(*) FROM Campaign_Results_Counters)")),
      QStringList(QStringLiteral("1|0|0|1")));
}

TEST_F(HostDatabase, TheHistoryShowsRunsToo) {
  const qint64 id = Save(QStringLiteral("Spring"));
  clock.AdvanceDays(1);
  Run(QStringLiteral("proc_Marketing_AddAllCustomers @CampaignID = %1, @UserID = 'BOB', @CampaignType = 'Promotions'")
          .arg(id));
  clock.AdvanceDays(1);
  Run(QStringLiteral("proc_addp__Marketing_Log 'BOB', 'Processing SMS and Emails', %1").arg(id));
  clock.AdvanceDays(1);
  Run(QStringLiteral("proc_addp__Marketing_Log 'EVE', 'Not a Manager User', %1").arg(id));
  EXPECT_EQ(Rows(QStringLiteral("SELECT Campaign_Name, Last_Run FROM Marketing_Campaigns")),
            QStringList(QStringLiteral("Spring|06/03/2026 10:20:30")));
  Recordset last = Run(QStringLiteral("proc_sel_Marketing_Campaigns_History 2"));
  ASSERT_EQ(last.RecordCount(), 2);
  EXPECT_EQ(last.Field(QStringLiteral("Event")).ToText(), QStringLiteral("Processing SMS and Emails"));
  EXPECT_EQ(Run(QStringLiteral("proc_sel_Marketing_Campaigns_History 0")).RecordCount(), 4);
  EXPECT_EQ(Run(QStringLiteral("proc_sel_Marketing_Campaigns_History 4")).RecordCount(), 4);
  EXPECT_EQ(History().at(1), QStringLiteral("Spring|Query run: Promotions|BOB"));
}

TEST(HostDatabaseFile, AFileThatIsThereIsOnlyReplacedWhenAsked) {
  const test::TempFolder folder;
  const QString path = folder.Write(QStringLiteral("Garage.db"), "precious");
  EXPECT_TRUE(CreateHostDatabase(path, ExistingFile::kRefuse).has_value());
  EXPECT_EQ(folder.Read(QStringLiteral("Garage.db")), QByteArray("precious"));
  const auto giveUp = [](sqlite3*) { return HostDatabaseProblem(QStringLiteral("no")); };
  EXPECT_EQ(CreateHostDatabase(path, ExistingFile::kReplace, giveUp), HostDatabaseProblem(QStringLiteral("no")));
  EXPECT_EQ(folder.Read(QStringLiteral("Garage.db")), QByteArray("precious"));
  EXPECT_EQ(CreateHostDatabase(path, ExistingFile::kReplace), std::nullopt);
  EXPECT_TRUE(folder.Read(QStringLiteral("Garage.db")).startsWith("SQLite format 3"));
  EXPECT_TRUE(CreateHostDatabase(folder.File(QStringLiteral("no/such/folder.db")), ExistingFile::kRefuse).has_value());
  EXPECT_EQ(folder.Names(), QStringList(QStringLiteral("Garage.db")));
}

TEST_F(HostDatabase, ADatabaseInUseIsNotReplaced) {
  const QString path = folder.File(QStringLiteral("Garage.db"));
  EXPECT_TRUE(CreateHostDatabase(path, ExistingFile::kReplace).has_value());
  Save(QStringLiteral("Still here"));
  connection.Close();
  EXPECT_EQ(CreateHostDatabase(path, ExistingFile::kReplace), std::nullopt);
  connection.Reopen();
  EXPECT_EQ(Run(QStringLiteral("proc_sel_Marketing_Campaigns")).RecordCount(), 0);
}

TEST_F(HostDatabase, ObjectsAreRenewedWhenOurTextChangesAndOnlyThen) {
  const auto look = [this] {
    return Rows(
        QStringLiteral("SELECT (SELECT COUNT(*) FROM _Procedures WHERE Name = 'proc__OptionVersion'), "
                       "(SELECT COUNT(*) FROM sqlite_master WHERE name = 'Campaign_Results_Count_Move'), "
                       "(SELECT COUNT(*) FROM sqlite_master WHERE name IN ('Of_The_Host', 'Ours_Once'))"));
  };
  const auto reopen = [this](const char* installed) {
    Run(QStringLiteral("UPDATE _Version SET Objects_Fingerprint = 'another'; UPDATE _Installed SET Fingerprint = "
                       "'another' WHERE ") +
        QLatin1String(installed));
    connection.Reopen();
  };
  Run(QStringLiteral(
      "DELETE FROM _Procedures WHERE Name = 'proc__OptionVersion'; DROP TRIGGER Campaign_Results_Count_Move; "
      "CREATE VIEW Of_The_Host AS SELECT 1 AS N; CREATE VIEW Ours_Once AS SELECT 2 AS N; "
      "INSERT INTO _Procedures VALUES ('proc_of_the_host', 'CREATE PROCEDURE proc_of_the_host', 'SELECT 5 AS N;', 1)"));
  connection.Reopen();
  EXPECT_EQ(look(), QStringList(QStringLiteral("0|0|2")));
  reopen("Name = 'proc_selp__Option'");
  EXPECT_EQ(look(), QStringList(QStringLiteral("0|0|2")))
      << "what was taken away stays away while our text is the same";
  Run(QStringLiteral("UPDATE _Version SET Objects_Set = Objects_Set + 1"));
  reopen("TRUE");
  EXPECT_EQ(look(), QStringList(QStringLiteral("0|0|2"))) << "a newer program installed them";
  Run(QStringLiteral("UPDATE _Version SET Objects_Set = Objects_Set - 2"));
  Run(QStringLiteral(
      "INSERT INTO _Installed VALUES ('view', 'Ours_Once', 'a text that the program no longer brings')"));
  reopen("Name IN ('proc__OptionVersion', 'Campaign_Results_Count_Move')");
  EXPECT_EQ(look(), QStringList(QStringLiteral("1|1|1")));
  EXPECT_EQ(Ask(QStringLiteral("proc_of_the_host")).ToInt(), 5);
}

}  // namespace
}  // namespace qbx
