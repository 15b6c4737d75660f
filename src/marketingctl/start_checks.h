// Whether a start went well enough for a run that nobody watches.

#pragma once

#include <QString>
#include <optional>

#include "marketingctl/headless_ui.h"
#include "startup/application.h"

namespace qbx::ctl {

/// \return what is wrong with an INI file that exists; a missing one is fine
[[nodiscard]] std::optional<QString> IniProblem(const QString& path);

/// A person sees a warning at the start and decides; unattended, nothing is done on settings that were read in part, since consent is one of
/// them.
/// \return why the command must not run, nothing when it may
[[nodiscard]] std::optional<QString> StartProblem(const Application& app, const HeadlessUi& ui);

}  // namespace qbx::ctl
