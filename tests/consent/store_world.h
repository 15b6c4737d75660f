// A garage of the model as a host database, and what the host changes in it later.

#pragma once

#include <sqlite3.h>

#include "consent/world.h"
#include "hostdb/host_file.h"

namespace qbx::consent {

/// Where the program finds its servers; the sink in the process needs neither.
struct ServerPorts {
  int http = 0;
  int smtp = 0;
};

/// Puts everything into an empty host database.
void StoreWorld(const World& world, const ServerPorts& ports, sqlite3* database);

/// Writes what can change after the query: everything about the consent of one customer.
void StoreConsent(const Customer& customer, sqlite3* database);
void RemoveCustomer(int customer, sqlite3* database);
void StoreSettings(const Settings& settings, sqlite3* database);

}  // namespace qbx::consent
