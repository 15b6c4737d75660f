// Storing the current campaign under the name that the user gave it.

#pragma once

#include "campaigns/campaign_storage.h"

namespace qbx {

/// Puts name and description into the record (as typed, untrimmed) and stores it: as a new campaign when its ID is
/// below 1, otherwise over the stored one. When somebody deleted the stored one meanwhile, the user is asked whether to
/// keep the settings as a new campaign. Failures are reported. After a failure the record keeps what was typed and the
/// campaign counts as changed, so that it is not lost without a question.
/// \return whether it is stored
bool StoreCampaign(Statements& statements, CampaignStorage& storage, CurrentCampaign& campaign, UserInterface& ui,
                   const QString& name, const QString& description);

/// Whether a stored campaign is known to be deleted. False also when that cannot be found out. Shows nothing.
[[nodiscard]] bool CampaignIsGone(Statements& statements, int campaignId);

}  // namespace qbx
