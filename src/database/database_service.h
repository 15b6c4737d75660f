// The service of the database server on this computer.

#pragma once

#include <QString>

#include "diagnostics/service_control.h"
#include "platform/user_interface.h"
#include "registry/registry_store.h"

namespace qbx {

/// The name of the database service: "mssql$qbx" when there is one, otherwise "mssqlserver" (whether or not that
/// exists).
[[nodiscard]] QString FindDatabaseService(ServiceControl& services);

/// Tells the user which database service is installed here, its TCP port and its state, or that none was found.
void ShowDatabaseServiceInfo(ServiceControl& services, RegistryStore& registry, UserInterface& ui);

}  // namespace qbx
