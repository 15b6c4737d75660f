// A look at a server before anybody logs in: whether it is there, and what it does about encryption.

#pragma once

#include <QString>
#include <chrono>

#include "database/odbc/server_address.h"

namespace qbx {

enum class ServerPresence {
  kNameUnknown,  ///< no computer has that name
  kPortClosed,   ///< the computer refuses connections there
  kNoAnswer,     ///< nothing comes back
  kStranger,     ///< something answers, but not as a SQL Server does
  kThere,
};

/// How much of a connection the server encrypts when a client leaves it to the server.
enum class ServerEncryption { kNone, kLoginOnly, kAll };

struct ServerProbe {
  ServerPresence presence = ServerPresence::kNoAnswer;
  ServerEncryption encryption = ServerEncryption::kNone;
  QString version = {};  ///< "15.0.4123"
};

/// Asks what a client asks first, which needs no login, and hangs up.
/// \param address  with its port
/// \param limit    for all of it
[[nodiscard]] ServerProbe ProbeServer(const ServerAddress& address, std::chrono::milliseconds limit);

}  // namespace qbx
