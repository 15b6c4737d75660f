// The host database as a scenario sees it: beside the program, on a connection of its own.

#pragma once

#include <QString>
#include <QVariant>

#include "platform/clock.h"

namespace qbx::scenario {

/// A database file, opened anew for each statement so that no lock is left behind. SQLite's SQL, with the engine's
/// functions.
class HostData {
 public:
  HostData(QString file, const Clock& clock) : file_(std::move(file)), clock_(clock) {}

  /// \return a map for each row, by column name; NULL is null
  /// \throws ScenarioError with SQLite's words and the statement
  [[nodiscard]] QVariantList Select(const QString& sql) const;
  /// Runs statements. \return rows changed by the last of them
  int Execute(const QString& sql) const;
  [[nodiscard]] const QString& File() const { return file_; }

 private:
  QString file_;
  const Clock& clock_;
};

}  // namespace qbx::scenario
