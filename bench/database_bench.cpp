// Compares the database layer with plain SQLite calls on the same file, of 100,000 rows and 30 columns.
//
//   database_bench [ROUNDS]
//
// Prints medians. The two sides run in turn.

#include <sqlite3.h>

#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

#include "database/connection.h"
#include "database/embedded/engine.h"
#include "database/embedded/functions.h"
#include "database/recordset.h"
#include "platform/clock.h"
#include "sqlite/sqlite_file.h"
#include "support/rounds.h"

namespace {

using qbx::bench::Fail;
using qbx::bench::Median;
using qbx::bench::Milliseconds;

constexpr int kRows = 100'000;
constexpr int kColumns = 30;
constexpr int kCalls = 20'000;

/// Two thirds text, one third numbers and dates, as in the rows of a campaign.
void MakeDatabase(sqlite3* database) {
  QByteArray create = "PRAGMA journal_mode = WAL; BEGIN; CREATE TABLE Big(ID integer primary key";
  QByteArray select = "i";
  for (int i = 1; i < kColumns; ++i) {
    const char* type = i % 6 == 0 ? "int" : i % 6 == 3 ? "datetime" : "nvarchar(40) COLLATE NOCASE";
    const QByteArray name = "c" + QByteArray::number(i);
    create += ", " + name + ' ' + type;
    select += i % 6 == 0 ? ", i * 7" : i % 6 == 3 ? ", '2024-02-03 04:05:06'" : ", 'Some text of row ' || i";
  }
  const QByteArray rows = QByteArray::number(kRows);
  create += "); INSERT INTO Big WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " + rows +
            ") SELECT " + select +
            " FROM n; CREATE TABLE Flags(RecordID integer primary key, Processed bit); INSERT INTO Flags SELECT ID, 0 "
            "FROM Big;"
            "CREATE TABLE _Procedures(Name text primary key, Header text, Body text, Version int);"
            "INSERT INTO _Procedures VALUES ('proc_flip', 'CREATE PROCEDURE proc_flip @ID int, @Value bit = 1 AS',"
            " 'UPDATE Flags SET Processed = @Value WHERE RecordID = @ID', 1); COMMIT;";
  qbx::ExecuteSql(database, create.constData());
}

std::size_t ReadPlain(sqlite3* database) {
  qbx::SqliteStatement statement(database, "SELECT * FROM Big");
  std::size_t bytes = 0;
  while (statement.Step()) {
    for (int i = 0; i < kColumns; ++i) {
      const auto* text = sqlite3_column_text(statement.Handle(), i);
      if (text != nullptr) bytes += static_cast<std::size_t>(sqlite3_column_bytes(statement.Handle(), i));
    }
  }
  return bytes;
}

void FlipPlain(sqlite3* database) {
  qbx::ExecuteSql(database, "BEGIN");
  qbx::SqliteStatement statement(database, "UPDATE Flags SET Processed = ?2 WHERE RecordID = ?1");
  for (int i = 1; i <= kCalls; ++i) {
    statement.Add(qint64{i}).Add(qint64{1}).Run();
  }
  qbx::ExecuteSql(database, "ROLLBACK");
}

void InTransaction(qbx::Session& session, const std::function<void(int)>& call) {
  session.Begin();
  for (int i = 1; i <= kCalls; ++i)
    call(i);
  session.Rollback();
}

struct Measure {
  const char* name;
  std::function<void()> work;
  double perCall;  // divides the time; 0: print the milliseconds of the whole
  std::vector<double> times = {};
};

}  // namespace

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 5;
  const QTemporaryDir folder;
  const qbx::SystemClock clock;
  const qbx::SqliteFile file(folder.filePath(QStringLiteral("Bench.db")), qbx::SqliteMode::kCreate);
  sqlite3* const plain = file.Handle();
  qbx::RegisterFunctions(plain, clock);
  MakeDatabase(plain);
  qbx::EmbeddedEngine engine(folder.path(), clock);
  const auto session = engine.Connect({QString(), QStringLiteral("Bench")}, {}, 5);
  const QString sql = QStringLiteral("SELECT * FROM Big");
  qbx::Recordset kept = qbx::Recordset::ReadAll(session->Execute(sql));
  if (kept.RecordCount() != kRows) Fail("rows are missing");
  std::vector<qbx::Parameter> parameters = session->DescribeProcedure(QStringLiteral("proc_flip"));
  parameters[1].isSet = true;

  Measure measures[] = {
      {"plain step + column_text, 100,000 x 30", [&] { ReadPlain(plain); }, 0},
      {"Recordset::ReadAll, 100,000 x 30", [&] { kept = qbx::Recordset::ReadAll(session->Execute(sql)); }, 0},
      {"Recordset::Sort by text", [&] { kept.Sort(1, false); }, 0},
      {"plain prepared UPDATE", [&] { FlipPlain(plain); }, kCalls},
      {"UPDATE as text",
       [&] {
         InTransaction(*session, [&](int i) {
           session->Execute(QStringLiteral("UPDATE Flags SET Processed = 1 WHERE RecordID = ") + QString::number(i));
         });
       },
       kCalls},
      {"procedure call",
       [&] {
         InTransaction(*session, [&](int i) {
           parameters[1].value = qbx::Value(i);
           session->Call(QStringLiteral("proc_flip"), parameters);
         });
       },
       kCalls},
      {"DeleteRow",
       [&] {
         InTransaction(*session,
                       [&](int i) { session->DeleteRow(QStringLiteral("Flags"), QStringLiteral("RecordID"), i); });
       },
       kCalls},
  };
  for (int round = 0; round < rounds; ++round) {
    for (Measure& measure : measures)
      measure.times.push_back(Milliseconds(measure.work));
  }
  for (const Measure& measure : measures) {
    const double median = Median(measure.times);
    if (measure.perCall > 0) {
      std::printf("%-42s %8.2f us a call\n", measure.name, median * 1000 / measure.perCall);
    } else {
      std::printf("%-42s %8.1f ms\n", measure.name, median);
    }
  }
  std::printf("ratio of reading: %.2f\n", Median(measures[1].times) / Median(measures[0].times));
}
