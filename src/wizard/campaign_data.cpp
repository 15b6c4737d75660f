#include "wizard/campaign_data.h"

#include "queries/starting_queries.h"
#include "wizard/campaign_settings.h"

namespace qbx {

KnownData DataOfCampaign(int query, const Filters& filters) {
  const std::optional<RowsOf> rows = RowsSelected(QueryPass::kFilter, query, filters);
  return {.vehicle = rows.has_value() && *rows != RowsOf::kCustomers,
          .dueDate = rows.has_value() && FindStartingQuery(query)->panels.reminder};
}

KnownData DataOfRecord(const CampaignRecord& record) {
  WizardState state;
  (void)CopyFromRecord(record, state);
  return DataOfCampaign(record.CampaignTypeID, state.filters);
}

}  // namespace qbx
