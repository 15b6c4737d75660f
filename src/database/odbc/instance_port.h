// At which port an instance listens: asked of the service on the server that knows its instances.

#pragma once

#include <QString>
#include <chrono>
#include <functional>

#include "database/odbc/server_address.h"

namespace qbx {

/// How the answer is waited for.
struct InstanceSearch {
  std::chrono::milliseconds limit = std::chrono::seconds(2);  ///< for the host's address and the answer together
  std::function<void()> pump = {};                            ///< called every 10 ms; may be empty
  std::function<bool()> cancelled = {};                       ///< asked every 10 ms; may be empty
  int port = 1434;                                            ///< of the service, UDP
};

/// Reads a server's name and finds out the port where none was written, so that a driver has only to connect.
///
///   const ServerAddress address = LocateServer(target.server, {.pump = pump});
///
/// The question is asked again every half second, since a datagram may be lost. What is no answer to it is passed over;
/// it comes from the asked computer only. Any thread may call this; the host's address is looked up in one of its own,
/// because that cannot be interrupted.
/// \return the address, always with a port
/// \throws DatabaseError  kUnspecifiedError where the port could not be found out, kCommandCancelled
[[nodiscard]] ServerAddress LocateServer(const QString& server, const InstanceSearch& search = {});

}  // namespace qbx
