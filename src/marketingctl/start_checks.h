// Whether a start went well enough for a run that nobody watches.

#pragma once

#include <QString>
#include <optional>

#include "marketingctl/headless_ui.h"
#include "startup/application.h"

namespace qbx::ctl {

/// Why a command must not run.
struct StartRefusal {
  Reason reason;
  QString text;
};

/// A program folder that was named has to exist.
[[nodiscard]] std::optional<StartRefusal> FolderProblem(const QString& folder);

/// \return what is wrong with an INI file that exists; a missing one is fine
[[nodiscard]] std::optional<StartRefusal> IniProblem(const QString& path);

/// A person sees a warning at the start and decides; unattended, nothing is done on settings that were read in part, since consent is one of
/// them.
/// \return why the command must not run, nothing when it may
[[nodiscard]] std::optional<StartRefusal> StartProblem(const Application& app, const HeadlessUi& ui);

}  // namespace qbx::ctl
