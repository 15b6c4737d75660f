// The settings of a campaign as flags: what `campaigns new`, `campaigns set` and `query` share.

#pragma once

#include <CLI/CLI.hpp>
#include <array>
#include <optional>
#include <string>

#include "campaigns/campaign_record.h"
#include "queries/filters.h"
#include "settings/startup_values.h"

namespace qbx::ctl {

/// What was given on the command line; what was not given changes nothing.
struct CampaignArguments {
  std::optional<std::string> query, from, to, makes, sms, subject, body, letter, description;
  std::array<std::optional<std::string>, kFilterCount> filters;  ///< by number; those that a campaign stores
  std::optional<int> records, start, reminder;

  [[nodiscard]] bool operator==(const CampaignArguments&) const = default;
};

/// Declares the flags.
void DeclareCampaignArguments(CLI::App& command, CampaignArguments& arguments);

/// Puts the arguments into a record.
/// \param today  what relative dates are relative to
/// \throws CLI::ValidationError with a sentence that says which flag is wrong and what it takes
void ApplyCampaignArguments(const CampaignArguments& arguments, const EditionFlags& edition, const QDate& today,
                            CampaignRecord& record);

/// Whether the dates given are still there when the campaign is loaded: the wizard takes none from before `kEarliestStoredYear`.
/// \throws CLI::ValidationError when one is not
void CheckStoredDates(const CampaignArguments& arguments, const CampaignRecord& record);

}  // namespace qbx::ctl
