// The fields of a campaign by name.

#pragma once

#include <span>
#include <variant>

#include "campaigns/campaign_record.h"

namespace qbx {

/// A stored field: its column (with "@" in front: its parameter) and its member of the record.
struct StoredField {
  const char* name;
  std::variant<int CampaignRecord::*, bool CampaignRecord::*, QDateTime CampaignRecord::*, QString CampaignRecord::*>
      member;
};

/// All stored fields except the ID, in the order of the storing procedures' parameters.
[[nodiscard]] std::span<const StoredField> StoredFields();

}  // namespace qbx
