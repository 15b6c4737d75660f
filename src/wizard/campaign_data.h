// What the rows of the current campaign know beside the customer.

#pragma once

#include "campaigns/campaign_record.h"
#include "merge/template_fields.h"
#include "queries/filters.h"

namespace qbx {

/// A query of customers knows no vehicle until a filter of vehicles narrows it; the reminder query alone knows due dates.
/// \param query  a query number; of none nothing is known
[[nodiscard]] KnownData DataOfCampaign(int query, const Filters& filters);
/// The same of a stored campaign, whose filters are those that are stored.
[[nodiscard]] KnownData DataOfRecord(const CampaignRecord& record);

}  // namespace qbx
