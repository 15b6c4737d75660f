// The host database for scenarios, on a connection beside the program's.

#pragma once

#include <QString>
#include <QVariant>

#include "platform/clock.h"

namespace qbx::scenario {

/// A database file. Each statement opens it again, so that no lock stays. The SQL is SQLite's, with the engine's
/// functions.
class HostData {
 public:
  HostData(QString file, const Clock& clock) : file_(std::move(file)), clock_(clock) {}

  /// \return a map for each row, by column name; NULL is null
  /// \throws ScenarioError with SQLite's message and the statement
  [[nodiscard]] QVariantList Select(const QString& sql) const;
  /// Runs statements. \return rows changed by the last of them
  int Execute(const QString& sql) const;
  [[nodiscard]] const QString& File() const { return file_; }

 private:
  QString file_;
  const Clock& clock_;
};

}  // namespace qbx::scenario
