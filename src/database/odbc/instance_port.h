// Finds the port of an instance: a service on the server's computer knows the ports of its instances.

#pragma once

#include <QString>
#include <chrono>
#include <functional>

#include "database/odbc/server_address.h"

namespace qbx {

/// How to wait for the answer.
struct InstanceSearch {
  std::chrono::milliseconds limit = std::chrono::seconds(2);  ///< for finding the host and waiting for the answer
  std::function<void()> pump = {};                            ///< called every 10 ms; may be empty
  std::function<bool()> cancelled = {};                       ///< asked every 10 ms; may be empty
  int port = 1434;                                            ///< UDP port of the service
};

/// Reads a server's name, and finds the port of its instance when the name has no port.
///
///   const ServerAddress address = LocateServer(target.server, {.pump = pump});
///
/// Asks the service again every half second, because a datagram may be lost. Accepts datagrams from the server's
/// computer only, and ignores what is not the answer. Any thread may call this. A thread of its own looks up the host's
/// address, because a look-up cannot be interrupted.
/// \return the address, always with a port
/// \throws DatabaseError  kUnusableSetting when the name cannot be a server's, kUnspecifiedError when the port was not
///                        found, kCommandCancelled
[[nodiscard]] ServerAddress LocateServer(const QString& server, const InstanceSearch& search = {});

}  // namespace qbx
