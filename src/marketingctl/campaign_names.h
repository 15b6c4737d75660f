// Campaigns on the command line, by number or by name.

#pragma once

#include <QString>
#include <optional>
#include <string>

#include "marketingctl/runner.h"

namespace qbx::ctl {

/// The campaign that an argument means. A whole number is always an ID, which is not looked up. Anything else is a
/// name, in upper or lower case.
/// \return nothing when no campaign or several have the name; the reason is on stderr
/// \throws CLI::ValidationError for a number that is too large
[[nodiscard]] std::optional<int> FindCampaign(Program& program, const std::string& argument);

/// Whether a campaign may be stored under a name: the name is valid, and no other campaign has it or that is allowed.
/// If not, the reason is on stderr.
/// \param own  the campaign that gets the name; 0: a new one
[[nodiscard]] bool NameMayBeUsed(Program& program, const QString& name, bool allowSameName, int own = 0);

/// Declares "ID", a campaign by number or name.
CLI::Option* DeclareCampaign(CLI::App& command, std::string& argument);
/// Declares a flag that names the file to write. An empty name is refused.
CLI::Option* DeclareFile(CLI::App& command, const char* flag, std::string& file, const char* about);
/// Declares "--pdf", the file to write.
CLI::Option* DeclarePdf(CLI::App& command, std::string& file);
void DeclareAllowSameName(CLI::App& command, bool& allowSameName);

}  // namespace qbx::ctl
