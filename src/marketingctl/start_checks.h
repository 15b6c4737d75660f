// Whether the start was good enough for a run without a person.

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

/// Refuses a program folder that was named and does not exist.
[[nodiscard]] std::optional<StartRefusal> FolderProblem(const QString& folder);

/// \return what is wrong with an existing INI file; a missing file is fine
[[nodiscard]] std::optional<StartRefusal> IniProblem(const QString& path);

/// \return why a file of the registry cannot be read; missing files are fine
[[nodiscard]] std::optional<StartRefusal> RegistryProblem(RegistryStore& registry);

/// When settings could be read only in part, a person sees a warning at the start and decides. Without a person the
/// command is refused, because consent is one of the settings.
/// \return why the command must not run; nothing when it may
[[nodiscard]] std::optional<StartRefusal> StartProblem(Application& app, const HeadlessUi& ui);

}  // namespace qbx::ctl
