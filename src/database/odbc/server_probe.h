// Asks a server, without a login, whether it is there and what it encrypts.

#pragma once

#include <QString>
#include <chrono>

#include "database/odbc/server_address.h"

namespace qbx {

/// Of several addresses, the last in this order counts.
enum class ServerPresence {
  kNameUnknown,  ///< no computer has this name
  kPortClosed,   ///< the computer refuses connections at the port
  kNoAnswer,     ///< the computer does not answer in time, or cannot be reached
  kHungUp,       ///< something listens at the port, and ends the connection without a word
  kSilent,       ///< something listens at the port, and says nothing in time
  kStranger,     ///< a program that is not a SQL Server answers
  kThere,
};

/// What the server encrypts when the client leaves the choice to it.
enum class ServerEncryption { kNone, kLoginOnly, kAll };

struct ServerProbe {
  ServerPresence presence = ServerPresence::kNoAnswer;
  ServerEncryption encryption = ServerEncryption::kNone;
  QString version = {};  ///< "15.0.4123"
};

/// Sends the first message of a client, which needs no login, reads the answer, and ends the connection.
/// \param address  with its port
/// \param limit    of the whole call
[[nodiscard]] ServerProbe ProbeServer(const ServerAddress& address, std::chrono::milliseconds limit);

}  // namespace qbx
