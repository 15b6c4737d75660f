// The host database for scenarios, on a connection beside the program's.

#pragma once

#include <QString>
#include <QVariant>

#include "database/session.h"
#include "platform/clock.h"

namespace qbx::scenario {

/// A database file. Each statement opens it again, so that no lock stays. The SQL is SQLite's, with the engine's
/// functions. With QBX_TEST_SERVER it is a SQL Server's database.
class HostData {
 public:
  HostData(QString file, const Clock& clock) : file_(std::move(file)), clock_(clock) {}

  /// \return a map for each row, by column name; NULL is null
  /// \throws ScenarioError with SQLite's message and the statement
  [[nodiscard]] QVariantList Select(const QString& sql) const;
  /// Runs statements. \return rows changed by the last of them
  int Execute(const QString& sql) const;
  [[nodiscard]] const QString& File() const { return file_; }
  /// Takes the write lock of the file until what this returns is destroyed.
  [[nodiscard]] std::shared_ptr<void> LockFile() const;
  /// Uses this session of a SQL Server from now on. It must outlive this object.
  void UseServer(Session& server) { server_ = &server; }
  /// Ends all sessions of the SQL Server's database but this one.
  void EndOtherSessions() const;

 private:
  QString file_;
  const Clock& clock_;
  Session* server_ = nullptr;
};

}  // namespace qbx::scenario
