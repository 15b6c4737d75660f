// Runs several scenarios, each in its own process.

#pragma once

#include <QStringList>

namespace qbx::scenario {

struct BatchSettings {
  QStringList files;
  QString screenshots = {};  ///< empty: no pictures
  int timeLimitSeconds = 120;
};

/// Starts this program once for each file, so that a crash or a hang only fails one scenario. Prints "N passed, N
/// failed" as the last line. Needs a QCoreApplication.
/// \return the exit status: 0 when all passed, 1 otherwise
[[nodiscard]] int RunBatch(const BatchSettings& settings);

}  // namespace qbx::scenario
