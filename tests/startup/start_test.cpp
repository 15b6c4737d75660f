// Start-up as a whole, on a real database file.

#include <gmock/gmock.h>

#include "settings/run_key.h"
#include "started_application.h"

namespace qbx::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const QString kUser = "/userid:\"Jo Brown\"";
const QString kDatabase = "QBXKorvelManager";

struct StartTest : testing::Test, StartedApplication {};

TEST_F(StartTest, RunsOnADatabase) {
  MakeDatabase(kDatabase);
  folder.Write("qbx.ini", "[App]\r\nCustomer=ABC12\r\nDebug=yes\r\n");
  PutMachine({}, "LogfileName", folder.File("other.log"));
  ASSERT_EQ(Launch(kUser), StartOutcome::kRunning);
  const Application& app = *application;
  EXPECT_TRUE(app.hostConnection.Ready());
  EXPECT_TRUE(ui.Messages().empty()) << ui.MessageTexts().join(u'|').toStdString();
  EXPECT_THAT(steps, ElementsAre("splash", "open", "close"));
  EXPECT_EQ(app.userOptions.UserId, "Jo Brown") << "a row was made for a new user";
  EXPECT_EQ(app.options.ModuleDatabaseVersion, kModuleSchemaLevel);
  EXPECT_EQ(app.ini.Read("Database", "Name"), kDatabase);
  EXPECT_EQ(Ask("SELECT Details FROM _Log WHERE TableKey = 'MARKETING'"), "Login: Jo Brown on Computer: WORKSHOP-PC");
  EXPECT_EQ(app.log.Path(), folder.File("other.log"));
  EXPECT_THAT(Log().toStdString(), HasSubstr("Debug Option specified."));
}

TEST_F(StartTest, IsRefusedWithoutAUser) {
  for (const char* line : {"", "/database:North", "/userid:\"\""}) {
    ui.Clear();
    steps.clear();
    ui.SetApplicationTitle("Built-in");
    EXPECT_EQ(Launch(line), StartOutcome::kRefused) << line;
    EXPECT_THAT(ui.MessageTexts(), ElementsAre("Please run Built-in from within the main QBX program."));
    EXPECT_FALSE(steps.contains("open"));
  }
  EXPECT_THAT(folder.Names(), testing::IsEmpty()) << "a refused start writes nothing";
}

TEST_F(StartTest, StopsOnALineThatMeansNothingAndAfterHelp) {
  for (const char* line : {"hello", "/?", "/? /userid:\"Jo\""}) {
    ui.Clear();
    steps.clear();
    EXPECT_EQ(Launch(line), StartOutcome::kStopped) << line;
    EXPECT_THAT(ui.StatusTexts(), ElementsAre("QBX Marketing & Reporting Module will now exit."));
    EXPECT_FALSE(ui.StatusVisible());
    EXPECT_EQ(ui.Messages().size(), line[0] == '/' ? 1U : 0U);
    EXPECT_FALSE(steps.contains("open"));
  }
}

TEST_F(StartTest, ARegistryDatabaseCountsForTheConnectionUnlessASwitchNamesOne) {
  MakeDatabase("Special");
  MakeDatabase(kDatabase + "_North");
  PutMachine({}, "Database", "  Special ");
  ASSERT_EQ(Launch(kUser), StartOutcome::kRunning);
  EXPECT_EQ(application->hostConnection.DatabaseName(), "Special");
  EXPECT_EQ(application->startup.databaseName, kDatabase) << "worked out again once the options were read";
  ASSERT_EQ(Launch(kUser + " /database:North"), StartOutcome::kRunning);
  EXPECT_EQ(application->hostConnection.DatabaseName(), kDatabase + "_North");
}

TEST_F(StartTest, ADamagedIniFileMeansDefaults) {
  MakeDatabase(kDatabase);
  const QByteArray damaged("[App\0\xff\xfe]]\nName", 14);
  folder.Write("QBX.INI", damaged);
  ASSERT_EQ(Launch(kUser), StartOutcome::kRunning);
  EXPECT_TRUE(application->hostConnection.Connected());
  EXPECT_EQ(folder.Read("QBX.INI"), damaged);
}

TEST_F(StartTest, AnErrorReportWritesAnEvent) {
  MakeDatabase(kDatabase);
  ASSERT_EQ(Launch(kUser), StartOutcome::kRunning);
  application->errors.ShowError(12, "Somewhere", "Overflow");
  EXPECT_EQ(Ask("SELECT Details FROM _Log WHERE TableKey = '12'"), "Overflow");
}

TEST(RunKeys, NameUserAndTimeAndFitTheirColumn) {
  const QDateTime now(QDate(2026, 3, 4), QTime(7, 8, 9));
  const QString key = MakeRunKey("Jo", now);
  EXPECT_THAT(key.toStdString(), testing::MatchesRegex("Jo-040326-070809-[0-9]+"));
  EXPECT_LE(key.section(u'-', -1).toInt(), 98);
  EXPECT_EQ(MakeRunKey(QString(20, u'x'), now).size(), 36);
  EXPECT_EQ(DayOfRunKey(MakeRunKey(QString(20, u'x'), now)), now.date());
}

}  // namespace
}  // namespace qbx::test
