#include "queries/filter_table.h"

#include "queries/starting_queries.h"
#include "util/boat_wording.h"

namespace qbx {

namespace {

constexpr FilterCondition kTypeConditions[] = {
    {.text = "Type Is", .word = "is", .withoutValue = "Customers without a type."},
    {.text = "Type Is Not", .word = "is-not", .withoutValue = "Customers with a type."}};
constexpr FilterCondition kSourceConditions[] = {
    {.text = "Source Is", .word = "is", .withoutValue = "Customers without an enquiry source."},
    {.text = "Source Is Not", .word = "is-not", .withoutValue = "Customers with an enquiry source."}};
constexpr FilterCondition kMileageConditions[] = {
    {.text = "Higher Than", .word = "higher", .from = 0},
    {.text = "Less Than", .word = "less", .to = 0},
    {.text = "Between", .word = "between", .twoValues = true, .from = 0, .to = 0}};
// The host's lower bound excludes the year itself, so bounds are moved by one.
constexpr FilterCondition kYearConditions[] = {
    {.text = "Is", .word = "is", .from = -1, .to = 0},
    {.text = "After", .word = "after", .from = 0},
    {.text = "Before", .word = "before", .to = -1},
    {.text = "Between", .word = "between", .twoValues = true, .from = -1, .to = 1}};

constexpr std::array<FilterRow, kFilterCount> kRows = {{
    {.index = kFilterNoMarketing,
     .name = "No Marketing",
     .caption = "Include customers who have selected No Marketing",
     .letter = 'i',
     .tip = "Ticked, customers marked \"No Marketing\" are selected, too. Otherwise they are left out.",
     .use = &CampaignRecord::Marketing,
     .useParameter = "@IgnoreMarketingSwitch",
     .flag = "--no-marketing",
     .help = "Include customers who have selected No Marketing"},
    {.index = kFilterCustomerType,
     .name = "Customer Type",
     .caption = "Customer Type",
     .letter = 't',
     .tip =
         "Ticked, only customers of this type are selected, or only those of any other type. An empty box means customers without a type.",
     .value = FilterValue::kList,
     .conditions = kTypeConditions,
     .text = &Filters::cmbData1,
     .control = "cmbData1",
     .listStatement = "proc_sel_Customer_Types",
     .use = &CampaignRecord::UseCustType,
     .when = &CampaignRecord::WhenCustType,
     .values = {&CampaignRecord::ValueCustType},
     .useParameter = "@UseCustType",
     .whenParameter = "@WhenCustType",
     .valueParameter = "@ValueCustType",
     .flag = "--cust-type",
     .help = "Customer type filter"},
    {.index = kFilterEnquirySource,
     .name = "Enquiry Source",
     .caption = "Enquiry Source",
     .letter = 'e',
     .tip =
         "Ticked, only customers who came from this source are selected, or only those from any other. An empty box means customers without a source.",
     .value = FilterValue::kList,
     .conditions = kSourceConditions,
     .text = &Filters::cmbData2,
     .control = "cmbData2",
     .listStatement = "proc_sel_Enquiry_Source",
     .use = &CampaignRecord::UseEnquirySource,
     .when = &CampaignRecord::WhenEnquirySource,
     .values = {&CampaignRecord::ValueEnquirySource},
     .useParameter = "@UseEnquirySource",
     .whenParameter = "@WhenEnquirySource",
     .valueParameter = "@ValueEnquirySource",
     .flag = "--source",
     .help = "Enquiry source filter"},
    {.index = kFilterMileage,
     .name = "Mileage",
     .caption = "Last known Mileage",
     .letter = 'l',
     .tip =
         "Ticked, only vehicles whose last known Mileage fits are selected. \"Higher\" and \"Less\" leave the number itself out, \"Between\" takes both in. Where nothing is known, nothing fits.",
     .value = FilterValue::kNumber,
     .ofVehicles = true,
     .conditions = kMileageConditions,
     .numbers = &Filters::txtMileage,
     .offered = &Filters::mileageVisible,
     .control = "txtMileage",
     .use = &CampaignRecord::UseLastKnownMileage,
     .when = &CampaignRecord::WhenLastKnownMileage,
     .values = {&CampaignRecord::ValueLastKnownMileage1, &CampaignRecord::ValueLastKnownMileage2},
     .useParameter = "@FilterMileage",
     .fromParameter = "@FromMileage",
     .toParameter = "@ToMileage",
     .flag = "--mileage",
     .help = "Mileage filter"},
    {.index = kFilterYear,
     .name = "Year",
     .caption = "Year of Manufacture",
     .letter = 'y',
     .tip =
         "Ticked, only vehicles made in these years are selected. \"After\" and \"Before\" leave the year itself out, \"Between\" takes both in. Where no year is known, nothing fits.",
     .value = FilterValue::kNumber,
     .ofVehicles = true,
     .conditions = kYearConditions,
     .numbers = &Filters::txtYear,
     .control = "txtYear",
     .use = &CampaignRecord::UseYearOfManufacture,
     .when = &CampaignRecord::WhenYearOfManufacture,
     .values = {&CampaignRecord::ValueYearOfManufacture1, &CampaignRecord::ValueYearOfManufacture2},
     .useParameter = "@FilterYear",
     .fromParameter = "@FromYear",
     .toParameter = "@ToYear",
     .flag = "--year",
     .help = "Year of manufacture filter"},
    {.index = kFilterModel,
     .name = "Vehicle Model",
     .caption = "Vehicle Model is:",
     .letter = 'm',
     .tip =
         "Ticked, only vehicles whose model contains this text are selected, in capitals or not. It is not saved with the campaign.",
     .value = FilterValue::kText,
     .ofVehicles = true,
     .text = &Filters::txtModel,
     .control = "txtModel",
     .useParameter = "@FilterModel",
     .valueParameter = "@ValueModel",
     .needsValue = "You have chosen to filter specific Models, but have not entered a vehicle model.",
     .flag = "--model",
     .help = "Model filter: vehicles whose model contains this text (not stored)"},
}};

/// A filter is found by its number, so row and number must agree.
constexpr bool NumbersAreInOrder() {
  for (size_t place = 0; place < kRows.size(); ++place) {
    if (kRows[place].index != place) return false;
  }
  return true;
}
static_assert(NumbersAreInOrder());

}  // namespace

std::span<const FilterRow, kFilterCount> FilterRows() {
  return kRows;
}

const FilterCondition* ConditionAt(const FilterRow& row, int position) {
  const bool exists = position >= 0 && static_cast<size_t>(position) < row.conditions.size();
  return exists ? &row.conditions[static_cast<size_t>(position)] : nullptr;
}

QString FilterWording(const char* text, bool boatEdition) {
  const QString wording = QString::fromLatin1(text);
  return boatEdition ? BoatWording(wording).replace(QLatin1String("Mileage"), QLatin1String("Hours")) : wording;
}

}  // namespace qbx
