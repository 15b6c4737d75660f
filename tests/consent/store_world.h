// Writes a garage of the model into a host database, and later changes of the host.

#pragma once

#include "consent/world.h"
#include "database/session.h"

namespace qbx::consent {

/// Where the program finds its servers. The sink in the process needs neither.
struct ServerPorts {
  int http = 0;
  int smtp = 0;
};

/// Writes everything into an empty host database.
void StoreWorld(const World& world, const ServerPorts& ports, Session& database);

/// Writes the consent of one customer, which can change after the query.
void StoreConsent(const Customer& customer, Session& database);
void RemoveCustomer(int customer, Session& database);
void StoreSettings(const Settings& settings, Session& database);

}  // namespace qbx::consent
