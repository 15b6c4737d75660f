// Which data the rows of the current campaign have beside the customer's.

#pragma once

#include "campaigns/campaign_record.h"
#include "merge/template_fields.h"
#include "queries/filters.h"

namespace qbx {

/// A query of customers gives vehicle data only with a filter of vehicles. Only the reminder query gives due dates.
/// \param query  a query number; an invalid one gives no data
[[nodiscard]] KnownData DataOfCampaign(int query, const Filters& filters);
/// The data of a stored campaign with its stored filters.
[[nodiscard]] KnownData DataOfRecord(const CampaignRecord& record);

}  // namespace qbx
