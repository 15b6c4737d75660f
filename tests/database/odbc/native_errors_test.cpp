#include "database/odbc/native_errors.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace qbx {
namespace {

/// Reads records from lines "number~state~text".
std::vector<NativeError> Records(const char* lines) {
  std::vector<NativeError> records;
  for (const QString& line : QString::fromLatin1(lines).split(u'\n', Qt::SkipEmptyParts))
    records.push_back({line.section(u'~', 0, 0).toInt(), line.section(u'~', 1, 1), line.section(u'~', 2)});
  return records;
}

TEST(NativeErrors, GetTheWordsThatTheInterpretationLooksFor) {
  const std::string network =
      "[DBNETLIB][ConnectionWrite (send()).]General network error. Check your network documentation.|";
  const struct {
    const char* records;
    int number;
    std::string texts;
    bool dead = false;
    CallEnd end = CallEnd::kFailed;
  } cases[] = {
      {"547~23000~[S][SQL Server]The DELETE statement conflicted with the REFERENCE constraint \"FK_2\". The conflict occurred in database \"Q\", table \"dbo.Vehicles\", column 'Owner_ID'.\n3621~01000~[S][SQL Server]Die Anweisung wurde beendet.",
       kConstraintFailed,
       "[S][SQL Server]The DELETE statement conflicted with COLUMN REFERENCE constraint 'FK_2'. The conflict occurred in database 'Q', table 'Vehicles', column 'Owner_ID'.|[S][SQL Server]The statement has been terminated. Die Anweisung wurde beendet.|"},
      {"5701~01000~[M][SQL Server]Changed context.\n208~42S02~[M][SQL Server][x] is \"O'Brien\".", kStatementFailed,
       "[M][SQL Server][x] is \"O'Brien\".|"},
      {"20017~01000~[F][SQL Server]EOF\n6005~42000~[F][SQL Server]SHUTDOWN is in progress.", kUnspecifiedError,
       network + "[F][SQL Server]SHUTDOWN is in progress.|", true},
      {"0~HYT00~[F]slow\n0~HY008~[F]x", kCommandTimedOut, "Timeout expired|", true},
      {"0~HY008~[F]x", kCommandTimedOut, "Timeout expired|", false, CallEnd::kTimedOut},
      {"0~HYT00~[F]slow", kCommandCancelled, "Operation cancelled by user|", true, CallEnd::kCancelled},
      {"", kStatementFailed, ""},
  };
  for (const auto& [records, number, texts, dead, end] : cases) {
    const DatabaseError error = FailureOfCall(Records(records), dead, end);
    EXPECT_EQ(error.Number(), number) << records;
    std::string list;
    for (const ProviderError& entry : error.Errors())
      list += entry.description.toStdString() + '|';
    EXPECT_EQ(list, texts);
  }
}

TEST(NativeErrors, TellWhyConnectingFailed) {
  const auto describe = [](const char* records, bool encrypt = false) {
    return std::string(FailureToConnect(Records(records), QStringLiteral("FreeTDS"), encrypt).what());
  };
  EXPECT_EQ(describe("18456~42000~[F][SQL Server]Fehler.\n20002~01000~[F]x"), "Login failed for user. Fehler.");
  EXPECT_EQ(describe("18456~42000~[F][SQL Server]Login failed for user 'u'.\n4060~42000~[F][SQL Server]Not there."),
            "Not there.");
  const char* failed = "20002~01000~[F][SQL Server]Adaptive Server connection failed";
  EXPECT_EQ(describe(failed), "SQL Server does not exist or access denied. (SQL Server connection failed)");
  EXPECT_TRUE(QString::fromStdString(describe(failed, true)).contains(QLatin1String("certificate")));
  EXPECT_EQ(describe("20017~08S01~[F]EOF\n20002~08001~[F]x", true),
            "The server ended the connection during the log-in. (EOF; x)");
}

}  // namespace
}  // namespace qbx
