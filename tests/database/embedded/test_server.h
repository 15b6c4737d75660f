// A small database in a folder of its own, and connections to it.

#pragma once

#include <QTemporaryDir>
#include <memory>

#include "database/connection.h"
#include "database/embedded/engine.h"
#include "database/embedded/functions.h"
#include "database/recordset.h"
#include "platform/clock.h"
#include "sqlite/sqlite_file.h"
#include "support/wire/server_under_test.h"

namespace qbx {

/// A clock that stands at 2024-03-05 14:06:07.890.
class StoppedClock final : public Clock {
 public:
  [[nodiscard]] QDateTime Now() const override { return QDateTime(QDate(2024, 3, 5), QTime(14, 6, 7, 890)); }
};

/// The embedded server with the database "Garage".
class TestServer {
 public:
  explicit TestServer(EmbeddedEngine::FileHook prepare = {}) : engine(folder.path(), clock, std::move(prepare)) {
    Run(Schema());
  }

  /// Runs SQL on the database file directly.
  void Run(const char* sql, const QString& name = "Garage") {
    const SqliteFile file(folder.filePath(name + ".db"), SqliteMode::kCreate);
    RegisterFunctions(file.Handle(), clock);
    ExecuteSql(file.Handle(), "PRAGMA synchronous = OFF; PRAGMA busy_timeout = 5000");
    ExecuteSql(file.Handle(), sql);
  }

  std::unique_ptr<Session> Connect(const QString& name = "Garage", const Login& login = {"sa", {}}) {
    return server.Connect({QString(), name}, login, 1);
  }

  static const char* Schema();

  QTemporaryDir folder;
  StoppedClock clock;
  EmbeddedEngine engine;
  test::ServerUnderTest server{engine};
};

/// First column of the first row as text, "-" when there is no row or no result.
inline std::string FirstText(std::unique_ptr<RowSource> rows) {
  if (!rows || !rows->Next()) return "-";
  return rows->At(0).ToValue().ToText().toStdString();
}

/// What `work` fails with: the numbers of its provider errors, ",", then ": " and the first description. Empty when it
/// does not fail.
template <typename Work>
std::string FailureOf(Work work) {
  try {
    work();
  } catch (const DatabaseError& error) {
    QStringList numbers;
    for (const ProviderError& entry : error.Errors())
      numbers << QString::number(entry.number);
    return (numbers.join(QLatin1Char(',')) + QString(": ") + error.Description()).toStdString();
  }
  return {};
}

}  // namespace qbx
