// Databases that an older program made: they are opened with every row, or refused and left as they are.

#include <sqlite3.h>
#include <sys/resource.h>

#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <algorithm>
#include <csignal>
#include <future>

#include "hostdb/database_upgrade.h"
#include "hostdb/host_file.h"
#include "support/embedded_host.h"

namespace qbx {
namespace {

/// Every row of a result, as "a|b|c".
QByteArrayList Rows(const QString& path, const QByteArray& sql) {
  const SqliteFile file = OpenHostFile(path);
  QByteArrayList rows;
  for (std::string_view rest(sql.constData()); !rest.empty();) {
    SqliteStatement read(file.Handle(), rest, &rest);
    while (read.Step()) {
      QByteArrayList fields;
      for (int i = 0; i < read.ColumnCount(); ++i)
        fields += read.IsNullAt(i) ? QByteArray("NULL") : read.TextAt(i);
      rows += fields.join('|');
    }
  }
  return rows;
}

/// The rows of every table that the old file has, but for what the program keeps about itself.
QMap<QByteArray, QByteArrayList> Content(const QString& path, const QString& old) {
  QMap<QByteArray, QByteArrayList> content;
  const QByteArray tables =
      "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT IN ('_Version', '_Procedures')";
  for (const QByteArray& table : Rows(old, tables)) {
    QByteArrayList columns = Rows(old, "SELECT '[' || name || ']' FROM pragma_table_info('" + table + "')");
    for (QByteArray& column : columns)
      if (table == "Campaign Results" && (column == "[Mobile]" || column == "[Email]"))
        column = "ifnull(" + column + ", '')";
    content[table] = Rows(path, "SELECT " + columns.join(',') + " FROM [" + table + "]");
    std::sort(content[table].begin(), content[table].end());
  }
  return content;
}

QByteArrayList Schema(const QString& path) {
  QByteArrayList schema = Rows(
      path, "SELECT type || ' ' || name || ' ' || sql FROM sqlite_master WHERE sql IS NOT NULL ORDER BY type, name");
  for (QByteArray& line : schema)
    line = QString::fromUtf8(line).remove(QRegularExpression("[\\s\"\\[\\]]")).toUtf8();
  return schema;
}

struct OldGarage : ::testing::Test {
  OldGarage() {
    for (const QString& copy : {path, old}) {
      QFile::copy(QStringLiteral(QBX_GARAGES "number-0.db"), copy);
      QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::WriteGroup);
    }
  }

  /// \return the number of the refusal, 0 when it was opened
  int Open(std::span<const EmbeddedSql> upgrades = UpgradeFiles()) {
    EmbeddedEngine engine(folder.Path(), clock, [upgrades](const QString& file) { KeepUpToDateWith(file, upgrades); });
    try {
      return engine.Connect({QString(), "Garage"}, {"sa", QString()}, 5) ? 0 : -1;
    } catch (const DatabaseError& error) {
      refusal = error.Description();
      return error.Errors().front().number;
    }
  }
  void ExpectAsItWas() {
    EXPECT_EQ(Content(path, old), Content(old, old));
    EXPECT_EQ(Schema(path), Schema(old));
  }
  /// The upgrades of the program and one more.
  static std::vector<EmbeddedSql> AndOne(const char* name, const char* text) {
    std::vector<EmbeddedSql> upgrades(UpgradeFiles().begin(), UpgradeFiles().end());
    upgrades.push_back({name, text});
    return upgrades;
  }
  [[nodiscard]] QString Copy(int number) const { return folder.File(QString("Garage.before-%1.db").arg(number)); }

  test::TempFolder folder;
  test::TempFolder untouched;
  test::FixedClock clock;
  const QString path = folder.File("Garage.db");
  const QString old = untouched.File("Garage.db");
  QString refusal;
};

TEST_F(OldGarage, OpensWithEveryRowAndIsLikeANewOne) {
  ASSERT_EQ(Open(), 0) << refusal.toStdString();
  EXPECT_EQ(Content(path, old), Content(old, old));
  EXPECT_EQ(Content(Copy(NewestFileNumber()), old), Content(old, old));
  EXPECT_EQ(QFile::permissions(Copy(NewestFileNumber())), QFile::permissions(old));
  const QString born = folder.File("New.db");
  ASSERT_EQ(CreateHostDatabase(born, ExistingFile::kRefuse), std::nullopt);
  EXPECT_EQ(Schema(path), Schema(born));
  const QByteArray number =
      "SELECT File_Number, Objects_Fingerprint, Objects_Set, Version, Marketing_Version FROM _Version; PRAGMA journal_mode";
  EXPECT_EQ(Rows(path, number), Rows(born, number));
  EXPECT_EQ(Rows(path, "PRAGMA integrity_check"), QByteArrayList{"ok"});
  EXPECT_EQ(Rows(path, "SELECT Name FROM _Procedures WHERE Name = 'proc_sel_Makes_all'"), QByteArrayList())
      << "somebody took it away, and our text is the same";
  QFile::remove(Copy(NewestFileNumber()));
  EXPECT_EQ(Open(), 0);
  EXPECT_FALSE(QFile::exists(Copy(NewestFileNumber()))) << "nothing was to be done";
}

TEST_F(OldGarage, KeysThatDifferInTrailingBlanksBecomeOne) {
  // Written with the order of that time: built in, blanks count.
  ExecuteSql(SqliteFile(path, SqliteMode::kExisting).Handle(),
             "INSERT INTO _OptionsUser (UserId) VALUES ('jo\t'), ('jo   '), ('Pat  '), ('pat x')");
  ASSERT_EQ(Open(), 0) << refusal.toStdString();
  EXPECT_EQ(Rows(path, "SELECT UserId FROM _OptionsUser ORDER BY rowid"),
            (QByteArrayList{"Pat", "Jo", "jo\t", "pat x"}));
  EXPECT_EQ(Rows(path, "SELECT UserId FROM _OptionsUser WHERE UserId = 'PAT '"), QByteArrayList{"Pat"});
  EXPECT_EQ(Rows(path, "SELECT Contact FROM Letters WHERE SessionID = 'a' ORDER BY LetterID"),
            (QByteArrayList{"y", "z"}));
  EXPECT_EQ(Rows(path, "PRAGMA integrity_check"), QByteArrayList{"ok"});
}

TEST_F(OldGarage, ANewerOneIsRefusedWithItsNumber) {
  Rows(path,
       "ALTER TABLE _Version ADD COLUMN File_Number int; ALTER TABLE _Version ADD COLUMN Objects_Fingerprint text;"
       "UPDATE _Version SET File_Number = 77");
  EXPECT_EQ(Open(), 948);
  EXPECT_TRUE(refusal.contains("number 77")) << refusal.toStdString();
  EXPECT_EQ(Content(path, old), Content(old, old));
  EXPECT_EQ(folder.Names(), QStringList("Garage.db"));
}

TEST_F(OldGarage, OneThatDoesNotSayItsNumberIsRefused) {
  Rows(path, "DELETE FROM _Version");
  EXPECT_EQ(Open(), 5120);
  Rows(path,
       "PRAGMA writable_schema = ON; UPDATE sqlite_master SET rootpage = (SELECT max(rootpage) FROM sqlite_master "
       "WHERE type = 'index') WHERE name = '_Version'");
  EXPECT_EQ(Open(), 5120);
  EXPECT_TRUE(refusal.contains("could not be read")) << refusal.toStdString();
}

TEST_F(OldGarage, OneThatAnotherProgramHasOpenIsRefused) {
  EmbeddedEngine other(folder.Path(), clock);
  const auto session = other.Connect({QString(), "Garage"}, {"sa", QString()}, 5);
  EXPECT_EQ(Open(), 5061);
  EXPECT_TRUE(refusal.contains("another program has it open")) << refusal.toStdString();
  ExpectAsItWas();
}

TEST_F(OldGarage, OfProgramsThatBeginAtOnceNoneIsRefused) {
  std::vector<std::future<void>> programs;
  programs.reserve(4);
  for (int i = 0; i < 4; ++i)
    programs.push_back(std::async(std::launch::async, [this] { KeepUpToDate(path); }));
  for (std::future<void>& program : programs)
    EXPECT_NO_THROW(program.get());
  EXPECT_EQ(Content(path, old), Content(old, old));
}

TEST_F(OldGarage, OneThatOnlyHasOldObjectsIsOpenedWhileSomebodyWrites) {
  ASSERT_EQ(Open(), 0) << refusal.toStdString();
  Rows(path, "UPDATE _Version SET Objects_Fingerprint = 'another'");
  const SqliteFile other = OpenHostFile(path);
  ExecuteSql(other.Handle(), "BEGIN IMMEDIATE");
  EXPECT_NO_THROW(KeepUpToDate(path));
}

TEST_F(OldGarage, AnUpgradeThatFailsOrIsKilledLeavesItWhole) {
  EXPECT_EQ(Open(AndOne("0012-fails", "DELETE FROM Customers; DROP TABLE Nobody")), 5069);
  ExpectAsItWas();
  const auto killed = [this] {
    const auto addDie = [](sqlite3* database, char**, const sqlite3_api_routines*) {
      const auto die = [](sqlite3_context*, int, sqlite3_value**) { std::raise(SIGKILL); };
      return sqlite3_create_function(database, "Die", 0, SQLITE_UTF8, nullptr, die, nullptr, nullptr);
    };
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(+addDie));
    const char* upgrade = "PRAGMA cache_size = 2; UPDATE Services SET Total = 0; DELETE FROM Customers; SELECT Die()";
    KeepUpToDateWith(path, AndOne("0012-dies", upgrade));  // most of it is in the file already
  };
  EXPECT_EXIT(killed(), ::testing::KilledBySignal(SIGKILL), "");
  EXPECT_TRUE(QFile::exists(path + "-journal")) << "it was in the middle";
  ExpectAsItWas();
  EXPECT_EQ(Open(), 0) << refusal.toStdString();
  EXPECT_EQ(Content(path, old), Content(old, old));
}

TEST_F(OldGarage, WithoutRoomForTheCopyItIsRefused) {
  const auto full = [this] {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{50'000, 50'000};
    setrlimit(RLIMIT_FSIZE, &limit);
    std::_Exit(Open() == 1105 && refusal.contains("copied first") ? 0 : 1);
  };
  EXPECT_EXIT(full(), ::testing::ExitedWithCode(0), "");
  ExpectAsItWas();
}

TEST_F(OldGarage, TheLastTwoCopiesAreKept) {
  for (const char* name :
       {"Garage.before-2.db", "Garage.before-10.db", "Garage.before-lunch.db", "Garages.before-1.db"})
    folder.Write(name, "a copy");
  EXPECT_EQ(Open(AndOne("0012-more", "SELECT 1")), 0) << refusal.toStdString();
  EXPECT_EQ(folder.Names().filter("before").join(u' '),
            "Garage.before-10.db Garage.before-12.db Garage.before-lunch.db Garages.before-1.db");
  QFile::copy(old, Copy(11));
  EXPECT_THROW(KeepUpToDate(Copy(11)), DatabaseError) << "it would be somebody's database and be removed one day";
  EXPECT_EQ(Content(Copy(11), old), Content(old, old));
}

}  // namespace
}  // namespace qbx
