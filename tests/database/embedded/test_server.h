// A small database in a folder of its own, and connections to it.

#pragma once

#include <sqlite3.h>

#include <QTemporaryDir>
#include <memory>

#include "database/connection.h"
#include "database/embedded/engine.h"
#include "database/embedded/functions.h"
#include "database/recordset.h"
#include "platform/clock.h"

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
  void Run(const char* sql, const QString& name = QStringLiteral("Garage")) {
    sqlite3* database = nullptr;
    sqlite3_open(folder.filePath(name + QStringLiteral(".db")).toUtf8().constData(), &database);
    sqlite3_busy_timeout(database, 5000);
    RegisterFunctions(database, clock);
    sqlite3_exec(database, "PRAGMA synchronous = OFF", nullptr, nullptr, nullptr);
    if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) != SQLITE_OK) qFatal("%s", sqlite3_errmsg(database));
    sqlite3_close(database);
  }

  std::unique_ptr<Session> Connect(const QString& name = QStringLiteral("Garage"),
                                   const Login& login = {QStringLiteral("sa"), {}}) {
    return engine.Connect({QString(), name}, login, 1);
  }

  static const char* Schema();

  QTemporaryDir folder;
  StoppedClock clock;
  EmbeddedEngine engine;
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
    return (numbers.join(QLatin1Char(',')) + QStringLiteral(": ") + error.Description()).toStdString();
  }
  return {};
}

}  // namespace qbx
