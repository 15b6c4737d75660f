// Writes a garage of the model into a host database, and later changes of the host.

#pragma once

#include <sqlite3.h>

#include "consent/world.h"
#include "hostdb/host_file.h"

namespace qbx::consent {

/// Where the program finds its servers. The sink in the process needs neither.
struct ServerPorts {
  int http = 0;
  int smtp = 0;
};

/// Writes everything into an empty host database.
void StoreWorld(const World& world, const ServerPorts& ports, sqlite3* database);

/// Writes the consent of one customer, which can change after the query.
void StoreConsent(const Customer& customer, sqlite3* database);
void RemoveCustomer(int customer, sqlite3* database);
void StoreSettings(const Settings& settings, sqlite3* database);

}  // namespace qbx::consent
