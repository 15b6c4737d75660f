// Start-up as a whole, on a real database file.

#include <gmock/gmock.h>

#include "settings/run_key.h"
#include "started_application.h"

namespace qbx::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const QString kUser = QStringLiteral("/userid:\"Jo Brown\"");
const QString kDatabase = QStringLiteral("QBXKorvelManager");

struct StartTest : testing::Test, StartedApplication {};

TEST_F(StartTest, RunsOnADatabase) {
  MakeDatabase(kDatabase);
  folder.Write(QStringLiteral("qbx.ini"), "[App]\r\nCustomer=ABC12\r\nDebug=yes\r\n");
  PutMachine({}, QStringLiteral("LogfileName"), folder.File(QStringLiteral("other.log")));
  ASSERT_EQ(Launch(kUser), StartOutcome::kRunning);
  const Application& app = *application;
  EXPECT_TRUE(app.hostConnection.Ready());
  EXPECT_TRUE(ui.Messages().empty()) << ui.MessageTexts().join(u'|').toStdString();
  EXPECT_THAT(steps, ElementsAre(QStringLiteral("splash"), QStringLiteral("open"), QStringLiteral("close")));
  EXPECT_EQ(ui.ApplicationTitle(), QStringLiteral("QBX Marketing & Reporting Module"));
  EXPECT_EQ(app.startup.user, QStringLiteral("Jo Brown"));
  EXPECT_EQ(app.userOptions.UserId, QStringLiteral("Jo Brown")) << "a row was made for a new user";
  EXPECT_EQ(app.options.ModuleDatabaseVersion, kModuleSchemaLevel);
  EXPECT_LT(app.campaign.record.ID, 0);
  EXPECT_EQ(app.ini.Read(QStringLiteral("Database"), QStringLiteral("Name")), kDatabase);
  EXPECT_EQ(Ask(QStringLiteral("SELECT Details FROM _Log WHERE TableKey = 'MARKETING'")),
            QStringLiteral("Login: Jo Brown on Computer: WORKSHOP-PC"));
  EXPECT_EQ(app.log.Path(), folder.File(QStringLiteral("other.log")));
  EXPECT_THAT(Log().toStdString(), HasSubstr("Debug Option specified."));
}

TEST_F(StartTest, IsRefusedWithoutAUser) {
  for (const char* line : {"", "/database:North", "/userid:\"\""}) {
    ui.Clear();
    steps.clear();
    ui.SetApplicationTitle(QStringLiteral("Built-in"));
    EXPECT_EQ(Launch(QString::fromLatin1(line)), StartOutcome::kRefused) << line;
    EXPECT_THAT(ui.MessageTexts(),
                ElementsAre(QStringLiteral("Please run Built-in from within the main QBX program.")));
    EXPECT_FALSE(steps.contains(QStringLiteral("open")));
  }
  EXPECT_THAT(folder.Names(), testing::IsEmpty()) << "a refused start writes nothing";
}

TEST_F(StartTest, StopsOnALineThatMeansNothingAndAfterHelp) {
  for (const char* line : {"hello", "/?", "/? /userid:\"Jo\""}) {
    ui.Clear();
    steps.clear();
    EXPECT_EQ(Launch(QString::fromLatin1(line)), StartOutcome::kStopped) << line;
    EXPECT_THAT(ui.StatusTexts(), ElementsAre(QStringLiteral("QBX Marketing & Reporting Module will now exit.")));
    EXPECT_FALSE(ui.StatusVisible());
    EXPECT_EQ(ui.Messages().size(), line[0] == '/' ? 1U : 0U);
    EXPECT_FALSE(steps.contains(QStringLiteral("open")));
  }
}

TEST_F(StartTest, ARegistryDatabaseCountsForTheConnectionUnlessASwitchNamesOne) {
  MakeDatabase(QStringLiteral("Special"));
  MakeDatabase(kDatabase + QStringLiteral("_North"));
  PutMachine({}, QStringLiteral("Database"), QStringLiteral("  Special "));
  ASSERT_EQ(Launch(kUser), StartOutcome::kRunning);
  EXPECT_EQ(application->hostConnection.DatabaseName(), QStringLiteral("Special"));
  EXPECT_EQ(application->startup.databaseName, kDatabase) << "worked out again once the options were read";
  ASSERT_EQ(Launch(kUser + QStringLiteral(" /database:North")), StartOutcome::kRunning);
  EXPECT_EQ(application->hostConnection.DatabaseName(), kDatabase + QStringLiteral("_North"));
}

TEST_F(StartTest, GoesOnWithoutADatabase) {
  ui.Answer(QStringLiteral("It may not have been configured or initialised yet"), MessageAnswer::kNo);
  ASSERT_EQ(Launch(kUser), StartOutcome::kRunning);
  EXPECT_THAT(steps, ElementsAre(QStringLiteral("splash"), QStringLiteral("open"), QStringLiteral("close")));
  EXPECT_EQ(application->hostConnection.Flags().status, DatabaseStatus::kDeclined);
  EXPECT_FALSE(application->hostConnection.Ready());
  EXPECT_EQ(ui.Messages().size(), 1U) << "the question alone: nothing is read from a server without the database";
  EXPECT_FALSE(QFile::exists(folder.File(kDatabase + QStringLiteral(".db"))));
}

TEST_F(StartTest, GoesOnWhenTheServerCannotBeReached) {
  PutMachine(QStringLiteral("\\Login"), QStringLiteral("Server"), QStringLiteral("FARAWAY"));
  ASSERT_EQ(Launch(kUser), StartOutcome::kRunning);
  EXPECT_FALSE(application->hostConnection.Connected());
  ASSERT_EQ(ui.Messages().size(), 1U);
  EXPECT_EQ(ui.Messages().front().icon, MessageIcon::kStop);
  EXPECT_THAT(ui.Messages().front().text.toStdString(), HasSubstr("SQL Server does not exist"));
  EXPECT_EQ(application->options.DatabaseVersion, 0);

  ui.Clear();
  PutMachine(QStringLiteral("\\Login"), QStringLiteral("Server"), QStringLiteral("workshop-pc"));
  PutMachine(QStringLiteral("\\Login"), QStringLiteral("Driver"), QStringLiteral("No Such Driver"));
  EXPECT_EQ(Launch(kUser), StartOutcome::kRunning);
  EXPECT_EQ(ui.Messages().front().icon, MessageIcon::kStop) << "no service is offered: this computer's may be well";
}

TEST_F(StartTest, ADatabaseOfANewerProgramIsRefusedOnceInPlainWords) {
  MakeDatabase(kDatabase);
  ASSERT_EQ(Launch(kUser), StartOutcome::kRunning);
  application->connection.Driver().Execute(QStringLiteral("UPDATE _Version SET File_Number = 77"));
  EXPECT_EQ(Launch(kUser), StartOutcome::kRunning);
  EXPECT_FALSE(application->hostConnection.Connected());
  ASSERT_EQ(ui.Messages().size(), 1U) << "no service is offered to be started";
  EXPECT_EQ(ui.Messages().front().icon, MessageIcon::kStop);
  EXPECT_THAT(ui.Messages().front().text.toStdString(), HasSubstr("It has the number 77"));
}

TEST_F(StartTest, ADamagedIniFileMeansDefaults) {
  MakeDatabase(kDatabase);
  const QByteArray damaged("[App\0\xff\xfe]]\nName", 14);
  folder.Write(QStringLiteral("QBX.INI"), damaged);
  ASSERT_EQ(Launch(kUser), StartOutcome::kRunning);
  EXPECT_TRUE(application->hostConnection.Connected());
  EXPECT_EQ(folder.Read(QStringLiteral("QBX.INI")), damaged);
}

TEST_F(StartTest, RunsHeadlessOnANamedDatabase) {
  MakeDatabase(QStringLiteral("Garage"));
  PutMachine({}, QStringLiteral("Database"), QStringLiteral("Other"));
  ASSERT_EQ(Make().start.RunHeadless(
                {.user = QStringLiteral(" scheduler "), .databaseName = QStringLiteral("Garage"), .instance = {}}),
            StartOutcome::kRunning);
  EXPECT_EQ(application->hostConnection.DatabaseName(), QStringLiteral("Garage"));
  EXPECT_EQ(application->eventContext.user, QStringLiteral("scheduler"));
  ui.Answer(QStringLiteral("back online?"), MessageAnswer::kNo);
  (void)Make().start.RunHeadless(
      {.user = QStringLiteral("Jo"), .databaseName = QStringLiteral("Garrage"), .instance = {}});
  EXPECT_NE(application->ini.Read(QStringLiteral("Database"), QStringLiteral("Name")), QStringLiteral("Garrage"));
  EXPECT_EQ(Make().start.RunHeadless({}), StartOutcome::kRefused);
}

TEST_F(StartTest, AnErrorReportWritesAnEvent) {
  MakeDatabase(kDatabase);
  ASSERT_EQ(Launch(kUser), StartOutcome::kRunning);
  application->errors.ShowError(12, QStringLiteral("Somewhere"), QStringLiteral("Overflow"));
  EXPECT_EQ(Ask(QStringLiteral("SELECT Details FROM _Log WHERE TableKey = '12'")), QStringLiteral("Overflow"));
}

TEST(RunKeys, NameUserAndTimeAndFitTheirColumn) {
  const QDateTime now(QDate(2026, 3, 4), QTime(7, 8, 9));
  const QString key = MakeRunKey(QStringLiteral("Jo"), now);
  EXPECT_THAT(key.toStdString(), testing::MatchesRegex("Jo-040326-070809-[0-9]+"));
  EXPECT_LE(key.section(u'-', -1).toInt(), 98);
  EXPECT_EQ(MakeRunKey(QString(20, u'x'), now).size(), 36);
  EXPECT_EQ(DayOfRunKey(MakeRunKey(QString(20, u'x'), now)), now.date());
}

}  // namespace
}  // namespace qbx::test
