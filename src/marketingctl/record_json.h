// A campaign record, printed.

#pragma once

#include <QJsonObject>

#include "campaigns/campaign_record.h"

namespace qbx::ctl {

/// Every field under its own name, the ID first; dates in ISO 8601, null when there is none.
[[nodiscard]] QJsonObject RecordToJson(const CampaignRecord& record);
/// The same for people, a line a field in the order of the record; long texts are cut.
void PrintRecord(const CampaignRecord& record);

}  // namespace qbx::ctl
