// What the user is told when the embedded engine itself fails.

#include <QFile>
#include <array>

#include "database/connect_database.h"
#include "database/database_fixture.h"
#include "database/embedded/engine.h"
#include "hostdb/host_database.h"
#include "support/fakes.h"
#include "support/wire/server_under_test.h"

namespace qbx {
namespace {

class RealEngineTest : public test::DatabaseFixture {
 protected:
  RealEngineTest() {
    const auto problem = CreateHostDatabase(folder_.File(QStringLiteral("Garage.db")), ExistingFile::kRefuse);
    EXPECT_FALSE(problem.has_value());
  }

  void OpenGarage() {
    garage_.Open(QStringLiteral("Data Source=;Initial Catalog=Garage;"), {QStringLiteral("sa"), {}});
  }

  bool Connect(const QString& database) {
    test::FakeServices manager;
    ServiceControl services(manager, log_);
    test::FakeShell shell;
    DatabaseConnector connector(garage_, routines_, services, shell, diagnostics_,
                                {.alternativePassword = QStringLiteral("spare"), .computerName = QStringLiteral("PC")});
    const bool connected = connector.ConnectDatabase({}, {QStringLiteral("sa"), QStringLiteral("secret")}, database);
    flags_ = connector.Flags();
    return connected;
  }

  QString Single(const QString& sql) {
    Recordset records;
    EXPECT_FALSE(routines_.dbOpenRec(records, sql));
    return records.Field(0).ToText();
  }

  EmbeddedEngine engine_{folder_.Path(), clock_};
  test::ServerUnderTest server_{engine_};
  Connection garage_{server_.Factory()};
  EventLog garageEvents_{garage_, context_, log_};
  ErrorInterpretation garageErrors_{context_, garageEvents_, lastError_, diagnostics_};
  Statements routines_{garage_, garageErrors_, garageEvents_, lastError_, diagnostics_};
  ConnectionFlags flags_;
};

TEST_F(RealEngineTest, ItsFailuresAreInterpreted) {
  OpenGarage();
  ASSERT_TRUE(routines_.dbExecute(QStringLiteral("CREATE TABLE Types (ID int PRIMARY KEY)")).Ok());
  ASSERT_TRUE(
      routines_.dbExecute(QStringLiteral("CREATE TABLE Cars (ID int PRIMARY KEY, Type_ID int REFERENCES Types (ID))"))
          .Ok());
  ASSERT_TRUE(routines_.dbExecute(QStringLiteral("INSERT INTO Types VALUES (1); INSERT INTO Cars VALUES (1, 1)")).Ok());
  const QString cancelled = QStringLiteral("\r\n\r\nThe operation has been cancelled.");
  const std::pair<const char*, QString> cases[] = {
      {"SELECT * FORM Types", QStringLiteral("Incorrect syntax  near 'FORM'\r\n")},
      {"SELECT * FROM Nowhere", QStringLiteral("Invalid object name 'Nowhere'.\r\n")},
      {"proc_selp_Missing 1", QStringLiteral("Could not find procedure 'pselect_Missing'.\r\n")},
      {"proc_selp_Marketing_Campaign", QStringLiteral("\r\nMissing Value 'CampaignID'\r\n")},
      {"INSERT INTO Types VALUES (1)",
       QStringLiteral("The Reference value entered already exists for this record type.") + cancelled},
      {"INSERT INTO Cars VALUES (2, 9)",
       QStringLiteral("The value entered for 'ID' does not exist in the table 'Types', please enter a valid value in "
                      "'ID' and try again.") +
           cancelled},
      {"DELETE FROM Types", QStringLiteral("The record you attempted to delete cannot be deleted as it has references "
                                           "to 'Cars', specifically relating to the column 'Type_ID'.") +
                                cancelled},
  };
  for (const auto& [sql, message] : cases) {
    ui_.Clear();
    EXPECT_FALSE(routines_.dbExecute(QLatin1String(sql)).Ok()) << sql;
    EXPECT_EQ(ui_.MessageTexts(), QStringList{message}) << sql;
  }
  EXPECT_EQ(Single(QStringLiteral(
                "SELECT COUNT(*) FROM [_Log] WHERE Username = 'jo brown' AND EventType = 6 AND TableKey = 'DB'")),
            QLatin1String("7"));
  EXPECT_EQ(Single(QStringLiteral("SELECT MAX(LEN(Details)) FROM [_Log]")), QLatin1String("80"));
}

TEST_F(RealEngineTest, ARestartedServerIsBridgedOutsideATransactionOnly) {
  OpenGarage();
  engine_.BreakSessions();
  EXPECT_EQ(Single(QStringLiteral("SELECT 5")), QLatin1String("5"));
  EXPECT_EQ(Single(QStringLiteral("SELECT Details FROM [_Log]")), QLatin1String("Connection Lost - reconnected."));
  EXPECT_TRUE(ui_.Messages().empty());

  const Transaction transaction(garage_.Driver());
  engine_.BreakSessions();
  ui_.Answer(QStringLiteral("Database connection lost. Recommended to quit the program. OK to quit?"),
             MessageAnswer::kNo);
  EXPECT_FALSE(routines_.dbExecute(QStringLiteral("UPDATE _Options SET Options_Company = 'B'")).Ok());
}

TEST_F(RealEngineTest, ConnectsToAGarageAndKeepsTheLastCampaignNumber) {
  EXPECT_TRUE(Connect(QStringLiteral("garage")));
  EXPECT_EQ(flags_.status, DatabaseStatus::kOnline);
  EXPECT_EQ(routines_.GetNextKeyID(QStringLiteral("TEMP")), -1);
  EXPECT_EQ(routines_.GetNextKeyID(QStringLiteral("TEMP")), -2);
}

TEST_F(RealEngineTest, TakesAGarageBackOnline) {
  engine_.SetDatabaseStatus(QStringLiteral("Garage"), QStringLiteral("OFFLINE"));
  ui_.Answer(QStringLiteral("may be offline.\r\rDo you want"), MessageAnswer::kYes);
  EXPECT_TRUE(Connect(QStringLiteral("Garage")));
  EXPECT_EQ(flags_.status, DatabaseStatus::kOnline);
  EXPECT_EQ(routines_.GetNextKeyID(QStringLiteral("TEMP")), -1);
}

TEST_F(RealEngineTest, SaysWhatIsWrongWithADatabaseThatCannotBeUsed) {
  folder_.Write(QStringLiteral("Broken.db"), QByteArray(5000, 'x'));
  folder_.Write(QStringLiteral("Empty.db"), {});
  const std::array<QString, 3> cases[] = {
      {QStringLiteral("Absent"), QStringLiteral("It may not have been configured or initialised yet"),
       QStringLiteral("the database does not exist")},
      {QStringLiteral("Broken"), {}, QStringLiteral("Broken.db is not a primary database file. It is damaged")},
      {QStringLiteral("Empty"), {}, QStringLiteral("Empty.db is not a primary database file. It is damaged")},
  };
  for (const auto& [database, question, reason] : cases) {
    ui_.Clear();
    if (!question.isEmpty()) ui_.Answer(question, MessageAnswer::kYes);
    EXPECT_EQ(Connect(database), !question.isEmpty());
    EXPECT_TRUE(ui_.MessageTexts().last().contains(reason)) << ui_.MessageTexts().last().toStdString();
    EXPECT_EQ(garage_.IsOpen(), !question.isEmpty());
  }
  EXPECT_EQ(folder_.Read(QStringLiteral("Broken.db")), QByteArray(5000, 'x'));
  EXPECT_FALSE(QFile::exists(folder_.File(QStringLiteral("Absent.db"))));
}

}  // namespace
}  // namespace qbx
