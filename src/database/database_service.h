// The service of the database server on this computer.

#pragma once

#include <QString>

#include "diagnostics/service_control.h"
#include "platform/user_interface.h"
#include "registry/registry_store.h"

namespace qbx {

/// The name of the database service: "mssql$qbx" when it is installed, otherwise "mssqlserver", installed or not.
[[nodiscard]] QString FindDatabaseService(ServiceControl& services);

/// Tells the user which database service is installed on this computer, with its TCP port and state, or that there is
/// none.
void ShowDatabaseServiceInfo(ServiceControl& services, RegistryStore& registry, UserInterface& ui);

}  // namespace qbx
