// One scenario file, run in this process.

#pragma once

#include <QString>

namespace qbx::scenario {

/// Runs a scenario against the real windows and prints a line for each check and each failure:
///
///     ok   Next refuses a group
///     FAIL tests/scenarios/steps.js:14: is "No", expected "Yes"
///
/// Needs a QApplication. \param screenshots  folder for `screenshot`; empty: none are taken
/// \param folder  program folder of another runner, which `restart` uses; empty: none
/// \return whether it passed: it was read, made at least one assertion, and nothing failed
[[nodiscard]] bool RunScenario(const QString& file, const QString& screenshots, const QString& folder);

}  // namespace qbx::scenario
