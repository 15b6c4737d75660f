// Commands to a running server, one line of JSON each.

#pragma once

#include <QByteArray>

#include "tds_server/server.h"

namespace qbx::tds {

/// The help of the commands, for --help.
extern const char* const kCommandHelp;

/// Carries out one command.
/// \return one line of JSON: the counters, or what is wrong with the command
[[nodiscard]] QByteArray CarryOutCommand(Server& server, const QByteArray& line);

}  // namespace qbx::tds
