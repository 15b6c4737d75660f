// The switches that the host product starts this program with.

#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "platform/user_interface.h"
#include "settings/startup_values.h"

namespace qbx {

/// What a terminal is told instead of a start, which needs a display: the answer to `--help` and `--version`.
/// \return nothing when the arguments hold neither
[[nodiscard]] std::optional<QString> TerminalAnswer(const QStringList& arguments);

inline constexpr int kMaxUser = 20;  ///< characters of a user

/// The name of an instance as it is given: 15 characters at most, up to the first blank, in upper case.
[[nodiscard]] QString InstanceName(const QString& text);

/// One line from the arguments of the process (the program's own name left out). The shell has taken the quotes away:
/// `/userid:VALUE` becomes `/userid:"VALUE"` again, so that a name may hold blanks.
[[nodiscard]] QString JoinCommandLine(const QStringList& arguments);

/// Reads the switches of `startup.commandLine`, found anywhere in it and without regard to case:
///
///     /userid:"Jo Brown"     the user, at most 20 characters
///     /database:North        the suffix "_North" of the database name, up to the first blank, 25 characters
///     /instance:Second       the instance in upper case, up to the first blank, 15 characters
///     /?                     shows the help message; nothing else is read
///
/// Sets user, instance and suffix, works the edition names out again after the latter two, and clears the command line
/// when one of the three was there.
void ParseCommandLine(StartupValues& startup, UserInterface& ui);

}  // namespace qbx
