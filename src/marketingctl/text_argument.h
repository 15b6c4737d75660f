// Texts on the command line.

#pragma once

#include <QString>
#include <string>

namespace qbx::ctl {

/// A text argument: "@FILE" is the content of that file (UTF-8, or Windows-1252 where it is no valid UTF-8; one line end at its end dropped), "@@" at the beginning one "@", "@-" standard input,
/// anything else itself.
/// \throws CLI::ValidationError when the file cannot be read
[[nodiscard]] QString TextArgument(const std::string& argument);

}  // namespace qbx::ctl
