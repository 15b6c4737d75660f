// The SQLite engine that takes the place of the host's server: finds database files, opens sessions, stores the status
// of databases.

#pragma once

#include <QString>
#include <atomic>
#include <functional>
#include <memory>

#include "database/connection.h"
#include "platform/clock.h"

namespace qbx {

class DatabaseFiles;
class SqliteDatabase;

/// Whether a configured server name selects the embedded engine: the part before the first "\" is empty or "embedded:".
[[nodiscard]] bool IsEmbeddedServer(const QString& server);

/// The embedded server of one program folder. A database is the file `<name>.db` in that folder; the engine never
/// creates one. "master" always exists and has no file.
///
///   EmbeddedEngine engine(folder, clock);
///   Connection connection(engine.Factory());
///   connection.Open("Data Source=;Initial Catalog=Garage;", {"sa", ""});
///
/// A session stays usable after the engine is destroyed. The clock must outlive both.
class EmbeddedEngine {
 public:
  /// Called with the file of a database before a session opens it, once the login was accepted. The engine then has no
  /// connection to the file for this session. It may throw DatabaseError.
  using FileHook = std::function<void(const QString& file)>;

  /// \param programFolder  with or without a trailing separator
  EmbeddedEngine(const QString& programFolder, const Clock& clock, FileHook prepare = {});
  EmbeddedEngine(const EmbeddedEngine&) = delete;
  EmbeddedEngine& operator=(const EmbeddedEngine&) = delete;

  /// Opens a session. The login is checked only when the database has a table `_Logins(Login, Password)`; for "master"
  /// the tables of all databases in the folder count.
  /// \throws DatabaseError with provider error 4060 (no such database), 18456 (login failed), 942 (offline), 5171 (the
  ///         file is no database)
  [[nodiscard]] std::unique_ptr<Session> Connect(const ConnectionTarget& target, const Login& login,
                                                 int connectionTimeoutSeconds);
  /// `Connect` in the form that a Connection takes. The engine must outlive it.
  [[nodiscard]] SessionFactory Factory();

  /// Ends every open session, as a restarted server does: its next call fails with kUnspecifiedError. For tests.
  void BreakSessions() { ++*generation_; }

 private:
  [[nodiscard]] std::shared_ptr<SqliteDatabase> Open(const QString& name, const QString& file,
                                                     int timeoutSeconds) const;

  std::shared_ptr<const DatabaseFiles> files_;
  const Clock& clock_;
  FileHook prepare_;
  std::shared_ptr<std::atomic<int>> generation_ = std::make_shared<std::atomic<int>>(0);
};

}  // namespace qbx
