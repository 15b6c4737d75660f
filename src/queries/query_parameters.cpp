#include "queries/query_parameters.h"

#include "queries/filters.h"
#include "queries/starting_queries.h"
#include "util/text.h"
#include "util/typed_number.h"

namespace qbx {

namespace {

/// Adds the parameters from the option panels of the query.
void AddQueryParameters(QueryPass pass, const StartingQuery& query, const QueryOptions& options,
                        std::vector<NamedValue>& parameters) {
  if (query.flag != nullptr) parameters.push_back({QString::fromLatin1(query.flag), 1});
  if (query.panels.ranking) {
    parameters.push_back({QStringLiteral("@Criteria"), TypedNumber(options.txtCriteria)});
    parameters.push_back({QStringLiteral("@CriteriaStart"), TypedNumber(options.txtCriteriaStart)});
    if (pass == QueryPass::kFilter) parameters.push_back({QStringLiteral("@Turnover"), 0});
  }
  if (query.panels.makes) {
    const QString makes = TrimBlanks(options.txtMakes).replace(QLatin1String(", "), QLatin1String(","));
    parameters.push_back({QStringLiteral("@Makes"), makes});
  }
  if (query.panels.reminder) parameters.push_back({QStringLiteral("@Recall_ID"), options.cmbReminder + 1});
}

}  // namespace

std::optional<RowsOf> RowsSelected(QueryPass pass, int query, const Filters& filters) {
  const StartingQuery* const found = FindStartingQuery(query);
  if (found == nullptr || found->IsGroup()) return std::nullopt;
  const bool overVehicles =
      found->rows == RowsOf::kCustomers && pass == QueryPass::kFilter && filters.AnyVehicleFilter();
  return overVehicles ? RowsOf::kVehicles : found->rows;
}

QString QueryProcedure(QueryPass pass, int query, const Filters& filters) {
  const std::optional<RowsOf> rows = RowsSelected(pass, query, filters);
  return rows ? ProcedureFor(*rows) : QString();
}

ProcedureCall BuildQueryCall(QueryPass pass, const QueryRequest& request, const QueryOptions& options,
                             const Filters& filters) {
  ProcedureCall call{.procedure = QueryProcedure(pass, request.CampaignTypeID, filters), .parameters = {}};
  std::vector<NamedValue>& parameters = call.parameters;
  parameters.push_back({QStringLiteral("@CampaignID"), request.campaignId});
  parameters.push_back({QStringLiteral("@UserID"), request.user});
  parameters.push_back({QStringLiteral("@FromDate"), options.FromDateText});
  parameters.push_back({QStringLiteral("@ToDate"), options.ToDateText});
  if (const StartingQuery* const query = FindStartingQuery(request.CampaignTypeID))
    AddQueryParameters(pass, *query, options, parameters);
  if (pass == QueryPass::kFilter) AddFilterParameters(filters, parameters);
  if (!options.cmbType.isEmpty()) parameters.push_back({QStringLiteral("@CampaignType"), options.cmbType});
  if (filters.chkIncludeOptedOut) parameters.push_back({QStringLiteral("@IncludeOptedOut"), true});
  return call;
}

}  // namespace qbx
