// A campaign record, printed.

#pragma once

#include <QJsonObject>

#include "campaigns/campaign_record.h"

namespace qbx::ctl {

/// Every field under its own name, the ID first. Dates are in ISO 8601, null when there is none.
[[nodiscard]] QJsonObject RecordToJson(const CampaignRecord& record);
/// Prints the record for people, one field a line, in the order of the record. Long texts are cut.
void PrintRecord(const CampaignRecord& record);

}  // namespace qbx::ctl
