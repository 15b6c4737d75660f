// Storing the current campaign under the name that the user gave it.

#pragma once

#include "campaigns/campaign_storage.h"

namespace qbx {

/// Puts name and description into the record (as typed, untrimmed) and stores it: as a new campaign when its ID is below 1, else over the
/// stored one. A stored one that somebody deleted meanwhile cannot be updated any more, so the user is asked whether to keep the settings
/// as a new campaign. Failures are reported; the record keeps what was typed, and the campaign counts as changed, so that it is not lost without a question.
/// \return whether it is stored
bool StoreCampaign(Statements& statements, CampaignStorage& storage, CurrentCampaign& campaign, UserInterface& ui,
                   const QString& name, const QString& description);

/// Whether a stored campaign is known to be gone. False also when that cannot be found out; says nothing.
[[nodiscard]] bool CampaignIsGone(Statements& statements, int campaignId);

}  // namespace qbx
