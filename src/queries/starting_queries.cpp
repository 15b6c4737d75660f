#include "queries/starting_queries.h"

#include <algorithm>

#include "queries/plain_messages.h"
#include "util/text.h"
#include "util/typed_number.h"

namespace qbx {

namespace {

constexpr StartingQuery kQueries[] = {
    {.number = kCustomerGroup,
     .parent = kNoQuery,
     .key = "Customer Query",
     .text = "Customer specific Queries",
     .rows = RowsOf::kCustomers,
     .description = "Customer Specific Queries"},
    {.number = kAllCustomers,
     .parent = kCustomerGroup,
     .key = "All Customers",
     .text = "All Customers",
     .rows = RowsOf::kCustomers,
     .description = "All customers in the system.",
     .selects = "All customers, with and without invoices."},
    {.number = kLapsedCustomers,
     .parent = kCustomerGroup,
     .key = "Lapsed Customers",
     .text = "Lapsed Customers",
     .rows = RowsOf::kCustomers,
     .description =
         "Lapsed Customers i.e Customers where no invoices have been generated for a certain amount of time. e.g Customer who have not been in for at least 12 months, excluding any who have not been in for 2 years or more.",
     .panels = {.text = "Customers not seen since Date 1, ignoring any records after Date 2.",
                .dates = "Invoiced Date",
                .from = "Last Seen Start:",
                .to = "Last Seen End:",
                .exampleMonths = 6},
     .dates = DateRule::kNeeded,
     .selects =
         "Customers with an invoice before {earlier} and none from then to {later}; later invoices do not count.",
     .flag = "@Lapsed"},
    {.number = kRecentCustomers,
     .parent = kCustomerGroup,
     .key = "Recent Customers",
     .text = "Recent Customers",
     .rows = RowsOf::kCustomers,
     .description =
         "Recent Customers i.e Customers who have been invoiced recently. e.g All customers who have been in in the last 12 months.",
     .panels = {.text = "Customers seen between these dates.", .dates = "Invoiced between"},
     .dates = DateRule::kNeeded,
     .selects = "Customers with an invoice from {earlier} to {later}, both days included.",
     .flag = "@Recent"},
    {.number = kTopCustomers,
     .parent = kCustomerGroup,
     .key = "Top Customers",
     .text = "Top Customers",
     .rows = RowsOf::kCustomers,
     .description =
         "Top Customers based on Turnover for a specified period. e.g Top customers for the past 12 months, or Top customers of all time.",
     .panels = {.text = "Specify how many Top customers and an optional date range e.g Top 25 over last 12 months.",
                .dates = "Invoiced between",
                .ranking = true},
     .dates = DateRule::kFilledWhenEmpty,
     .selects =
         "{places} by the sum of their invoices from {earlier} to {later}, highest first. Only customers with an invoice then who may be contacted are ranked.",
     .flag = "@Top",
     .vehicleFilters = false},
    {.number = kBottomCustomers,
     .parent = kCustomerGroup,
     .key = "Bottom Customers",
     .text = "Bottom Customers",
     .rows = RowsOf::kCustomers,
     .description =
         "Least spending Customers based on Turnover for a specified period. e.g Least spending customers for the past 12 months, or Least spending customers of all time.",
     .panels = {.text =
                    "Specify how many customers and an optional date range e.g Least spending 25 over last 12 months.",
                .dates = "Invoiced between",
                .ranking = true},
     .dates = DateRule::kFilledWhenEmpty,
     .selects =
         "{places} by the sum of their invoices from {earlier} to {later}, lowest first. Only customers with an invoice then who may be contacted are ranked.",
     .flag = "@Bottom",
     .vehicleFilters = false},
    {.number = kVehicleGroup,
     .parent = kNoQuery,
     .key = "Vehicle Query",
     .text = "Vehicle Specific Queries",
     .rows = RowsOf::kVehicles,
     .description = "Vehicle Specific Queries"},
    {.number = kAllVehicles,
     .parent = kVehicleGroup,
     .key = "All Vehicles",
     .text = "All Vehicles",
     .rows = RowsOf::kVehicles,
     .description = "All vehicles in the system (which have an associated customer).",
     .selects = "All vehicles that have a customer."},
    {.number = kSpecificMakes,
     .parent = kVehicleGroup,
     .key = "Specific Makes",
     .text = "Specific Makes",
     .rows = RowsOf::kVehicles,
     .description = "All vehicles which are of a specific Make.",
     .example = "e.g All vehicles which are an Audi or BMW.",
     .panels = {.text = "Choose the Makes to include in the query.",
                .makes = MakesOption{"Makes", 0, "Makes Selection is not valid. Please choose one or more Makes."}},
     .selects = "Customers' vehicles of the make {makes}."},
    {.number = kReminderDate,
     .parent = kVehicleGroup,
     .key = "Reminder Date",
     .text = "Based on Reminder Date",
     .rows = RowsOf::kVehicles,
     .description = "All vehicles with a specific Recall Date.",
     .example = "e.g All Vehicles with an MOT Due date in December {year}.",
     .panels = {.text = "Choose the Reminder and the Recall Due Date Range.",
                .dates = "Recall Date Range",
                .reminder = true},
     .dates = DateRule::kNeeded,
     .selects = "Customers' vehicles whose date of \"{reminder}\" lies from {earlier} to {later}, both days included."},
    {.number = kSpecificEngines,
     .parent = kVehicleGroup,
     .key = "Specific Engines",
     .text = "Specific Engines",
     .rows = RowsOf::kEngines,
     .boatOnly = true,
     .description = "All engines which are of a specific Make.",
     .panels = {.text = "Choose the Engines to include in the query.",
                .makes =
                    MakesOption{"Engines", 5, "Engines Selection is not valid. Please choose one of more Engines."}},
     .selects = "Customers' engines of the make {makes}.",
     .mileageFilter = false},
};

std::optional<Message> CheckRanking(const QueryOptions& options) {
  if (TypedNumber(options.txtCriteria) <= 0)
    return WarningMessage(QStringLiteral("Criteria is not valid. Number expected."));
  if (TypedNumber(options.txtCriteriaStart) <= 0)
    return WarningMessage(QStringLiteral("Criteria Start Record is not valid. Number expected."));
  return std::nullopt;
}

}  // namespace

std::span<const StartingQuery> StartingQueries() {
  return kQueries;
}

const StartingQuery* FindStartingQuery(int number) {
  const auto* const found = std::ranges::find(kQueries, number, &StartingQuery::number);
  return found == std::ranges::end(kQueries) ? nullptr : found;
}

QString ProcedureFor(RowsOf rows) {
  switch (rows) {
    case RowsOf::kCustomers:
      return QStringLiteral("proc_Marketing_AddAllCustomers");
    case RowsOf::kVehicles:
      return QStringLiteral("proc_Marketing_AddAllVehicles");
    case RowsOf::kEngines:
      return QStringLiteral("proc_Marketing_AddAllEngines");
  }
  return {};
}

std::optional<Message> CheckReminder(const StartingQuery& query, const QueryOptions& options) {
  if (!query.panels.reminder || options.cmbReminder >= 0) return std::nullopt;
  return WarningMessage(QStringLiteral("No Reminder specified."));
}

std::optional<Message> CheckQueryOptions(const StartingQuery& query, const QueryOptions& options) {
  if (query.panels.ranking) {
    if (std::optional<Message> refusal = CheckRanking(options)) return refusal;
  }
  if (query.panels.makes && TrimBlanks(options.txtMakes).isEmpty())
    return WarningMessage(QString::fromLatin1(query.panels.makes->refusal));
  return CheckReminder(query, options);
}

}  // namespace qbx
