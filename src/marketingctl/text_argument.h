// Texts on the command line.

#pragma once

#include <QString>
#include <string>

namespace qbx::ctl {

/// A text argument. "@FILE" is the content of the file, in UTF-8, or in Windows-1252 when it is no valid UTF-8; one
/// line end at its end is dropped. "@-" is standard input. "@@" at the beginning is one "@". Anything else is the text
/// itself.
/// \throws CLI::ValidationError when the file cannot be read
[[nodiscard]] QString TextArgument(const std::string& argument);

}  // namespace qbx::ctl
