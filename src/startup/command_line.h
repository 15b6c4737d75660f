// The switches that the host product starts this program with.

#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "platform/user_interface.h"
#include "settings/startup_values.h"

namespace qbx {

/// The answer to `--help` or `--version`. A terminal gets it instead of a start, which would need a display.
/// \return nothing when the arguments hold neither
[[nodiscard]] std::optional<QString> TerminalAnswer(const QStringList& arguments);

inline constexpr int kMaxUser = 20;  ///< maximum length of a user's name, in characters

/// The instance's name in upper case, up to the first blank, at most 15 characters.
[[nodiscard]] QString InstanceName(const QString& text);

/// The arguments of the process (without the program's name) as one line. The shell removed the quotes, so
/// `/userid:VALUE` becomes `/userid:"VALUE"` again and a name may hold blanks.
[[nodiscard]] QString JoinCommandLine(const QStringList& arguments);

/// Reads the switches of `startup.commandLine`. A switch is found anywhere in the line, ignoring case:
///
///     /userid:"Jo Brown"     the user, at most 20 characters
///     /database:North        the suffix "_North" of the database name, up to the first blank, 25 characters
///     /instance:Second       the instance in upper case, up to the first blank, 15 characters
///     /?                     shows the help message; nothing else is read
///
/// Sets user, instance and suffix. A new instance or suffix also renews the edition names. The command line is cleared
/// when it held one of these three.
void ParseCommandLine(StartupValues& startup, UserInterface& ui);

}  // namespace qbx
