// The settings of a campaign as flags, for `campaigns new`, `campaigns set` and `query`.

#pragma once

#include <CLI/CLI.hpp>
#include <array>
#include <optional>
#include <string>

#include "campaigns/campaign_record.h"
#include "queries/filters.h"
#include "settings/startup_values.h"

namespace qbx::ctl {

/// What the command line gave. A setting that was not given is not changed.
struct CampaignArguments {
  std::optional<std::string> query, from, to, makes, sms, subject, body, letter, description;
  std::array<std::optional<std::string>, kFilterCount> filters;  ///< by number; only filters that a campaign stores
  std::optional<int> records, start, reminder;

  [[nodiscard]] bool operator==(const CampaignArguments&) const = default;
};

/// Declares the flags.
void DeclareCampaignArguments(CLI::App& command, CampaignArguments& arguments);

/// Puts the arguments into a record.
/// \param today  the day that relative dates are relative to
/// \throws CLI::ValidationError with a sentence that says which flag is wrong and what it takes
void ApplyCampaignArguments(const CampaignArguments& arguments, const EditionFlags& edition, const QDate& today,
                            CampaignRecord& record);

/// Checks that the wizard will accept the dates when it loads the campaign: it takes none from before
/// `kEarliestStoredYear`.
/// \throws CLI::ValidationError when it will not
void CheckStoredDates(const CampaignArguments& arguments, const CampaignRecord& record);

}  // namespace qbx::ctl
