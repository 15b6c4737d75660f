// Which stored procedure a query runs, and with which parameters.

#include "queries/query_parameters.h"

#include "queries/filters.h"
#include "queries/query_catalogue.h"
#include "util/text.h"

namespace qbx {

namespace {

void AddSwitch(int query, std::vector<NamedValue>& parameters) {
  static constexpr const char* kSwitches[] = {"@Lapsed", "@Recent", "@Top", "@Bottom"};
  if (query < kLapsedCustomers || query > kBottomCustomers) return;
  parameters.push_back({QString::fromLatin1(kSwitches[query - kLapsedCustomers]), 1});
}

void AddQueryParameters(QueryPass pass, int query, const QueryOptions& options, std::vector<NamedValue>& parameters) {
  AddSwitch(query, parameters);
  switch (query) {
    case kTopCustomers:
    case kBottomCustomers:
      parameters.push_back({QStringLiteral("@Criteria"), LeadingNumber(options.txtCriteria)});
      parameters.push_back({QStringLiteral("@CriteriaStart"), LeadingNumber(options.txtCriteriaStart)});
      if (pass == QueryPass::kFilter) parameters.push_back({QStringLiteral("@Turnover"), 0});
      return;
    case kSpecificMakes:
    case kSpecificEngines:
      parameters.push_back(
          {QStringLiteral("@Makes"), TrimBlanks(options.txtMakes).replace(QLatin1String(", "), QLatin1String(","))});
      return;
    case kReminderDate:
      parameters.push_back({QStringLiteral("@Recall_ID"), options.cmbReminder + 1});
      return;
    default:
      return;
  }
}

}  // namespace

QString QueryProcedure(QueryPass pass, int query, const Filters& filters) {
  if (IsCustomerQuery(query)) {
    const bool overVehicles = pass == QueryPass::kFilter && filters.AnyVehicleFilter();
    return overVehicles ? QStringLiteral("proc_Marketing_AddAllVehicles")
                        : QStringLiteral("proc_Marketing_AddAllCustomers");
  }
  switch (query) {
    case kAllVehicles:
    case kSpecificMakes:
    case kReminderDate:
      return QStringLiteral("proc_Marketing_AddAllVehicles");
    case kSpecificEngines:
      return QStringLiteral("proc_Marketing_AddAllEngines");
    default:
      return {};
  }
}

ProcedureCall BuildQueryCall(QueryPass pass, const QueryRequest& request, const QueryOptions& options,
                             const Filters& filters) {
  ProcedureCall call{.procedure = QueryProcedure(pass, request.CampaignTypeID, filters), .parameters = {}};
  std::vector<NamedValue>& parameters = call.parameters;
  parameters.push_back({QStringLiteral("@CampaignID"), request.campaignId});
  parameters.push_back({QStringLiteral("@UserID"), request.user});
  parameters.push_back({QStringLiteral("@FromDate"), options.FromDateText});
  parameters.push_back({QStringLiteral("@ToDate"), options.ToDateText});
  AddQueryParameters(pass, request.CampaignTypeID, options, parameters);
  if (pass == QueryPass::kFilter) AddFilterParameters(filters, parameters);
  if (!options.cmbType.isEmpty()) parameters.push_back({QStringLiteral("@CampaignType"), options.cmbType});
  if (filters.chkIncludeOptedOut) parameters.push_back({QStringLiteral("@IncludeOptedOut"), true});
  return call;
}

}  // namespace qbx
