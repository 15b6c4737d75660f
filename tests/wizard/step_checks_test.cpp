// What "Next >" and "Run Marketing Campaign" refuse, and with which words.

#include "wizard/step_checks.h"

#include <gtest/gtest.h>

#include <functional>

#include "queries/query_catalogue.h"

namespace qbx {
namespace {

const QDate kToday(2026, 3, 4);

QString TextOf(const std::optional<Message>& message) {
  return message ? message->text : QString();
}

QueryOptions Complete() {
  QueryOptions options;
  options.dteDate = {QDate(2025, 1, 1), QDate(2024, 1, 1)};
  options.txtCriteria = "25 of them";
  options.txtCriteriaStart = "1";
  options.txtMakes = "Audi";
  options.cmbReminder = 0;
  return options;
}

TEST(StepChecks, StepOne) {
  const auto nothing = [](QueryOptions&) {};
  const auto earlyDate = [](QueryOptions& o) { o.dteDate[1] = QDate(1989, 12, 31); };
  const auto noDate = [](QueryOptions& o) { o.dteDate[0] = QDate(); };
  struct Case {
    int query;
    std::function<void(QueryOptions&)> change;
    const char* refusal;
  };
  const std::vector<Case> cases = {
      {kCustomerGroup, nothing, "Invalid Campaign Type Selected."},
      {kVehicleGroup, nothing, "Invalid Campaign Type Selected."},
      {kAllCustomers, noDate, ""},
      {kAllVehicles, [](QueryOptions& o) { o = {}; }, ""},
      {kLapsedCustomers, nothing, ""},
      {kLapsedCustomers, noDate, "Dates are not valid."},
      {kRecentCustomers, earlyDate, "Dates are not valid."},
      {kRecentCustomers, [](QueryOptions& o) { o.dteDate[1] = QDate(1990, 1, 1); }, ""},
      {kTopCustomers, [](QueryOptions& o) { o.dteDate = {}; }, ""},
      {kTopCustomers, earlyDate, "Dates are not valid."},
      {kTopCustomers, [](QueryOptions& o) { o.txtCriteria = "0"; }, "Criteria is not valid. Number expected."},
      {kBottomCustomers, [](QueryOptions& o) { o.txtCriteria = "x25"; }, "Criteria is not valid. Number expected."},
      {kBottomCustomers, [](QueryOptions& o) { o.txtCriteriaStart = ""; },
       "Criteria Start Record is not valid. Number expected."},
      {kSpecificMakes, [](QueryOptions& o) { o.txtMakes = "  "; },
       "Makes Selection is not valid. Please choose one or more Makes."},
      {kSpecificEngines, [](QueryOptions& o) { o.txtMakes = ""; },
       "Engines Selection is not valid. Please choose one of more Engines."},
      {kReminderDate, noDate, "Dates are not valid."},
      {kReminderDate, [](QueryOptions& o) { o.cmbReminder = -1; }, "No Reminder specified."},
      {kReminderDate, nothing, ""},
  };
  for (size_t i = 0; i < cases.size(); ++i) {
    QueryOptions options = Complete();
    cases[i].change(options);
    EXPECT_EQ(TextOf(CheckStepOne(cases[i].query, options, false, kToday)), cases[i].refusal) << "case " << i;
  }
}

TEST(StepChecks, TopFillsEmptyDatesAndSetsTheTexts) {
  QueryOptions options = Complete();
  options.dteDate = {};
  EXPECT_FALSE(CheckStepOne(kTopCustomers, options, false, kToday));
  EXPECT_EQ(options.dteDate[0], QDate(1990, 1, 1));
  EXPECT_EQ(options.dteDate[1], kToday);
  EXPECT_EQ(options.FromDateText, "1990-01-01");
  EXPECT_EQ(options.ToDateText, "2026-03-04");

  options.dteDate[0] = QDate(1980, 1, 1);
  EXPECT_TRUE(CheckStepOne(kTopCustomers, options, false, kToday));
  EXPECT_EQ(options.FromDateText, "1990-01-01");
}

TEST(StepChecks, ThePlatformNeedsACampaignType) {
  QueryOptions options = Complete();
  const std::optional<Message> refusal = CheckStepOne(kAllCustomers, options, true, kToday);
  EXPECT_EQ(TextOf(refusal), "Please select a Campaign Type.");
  EXPECT_EQ(refusal->icon, MessageIcon::kInformation);
  options.cmbType = "Other";
  EXPECT_FALSE(CheckStepOne(kAllCustomers, options, true, kToday));
}

TEST(StepChecks, StepTwo) {
  const auto tick = [](FilterIndex filter, int condition = -1) {
    Filters filters;
    filters.chkFilter[filter] = true;
    if (filter < kFilterModel) filters.cmbFilter[filter] = condition;
    return filters;
  };
  const auto mileage = [&](int condition, const char* from, const char* to) {
    Filters filters = tick(kFilterMileage, condition);
    filters.txtMileage = {from, to};
    return filters;
  };
  Filters years = tick(kFilterYear, 3);
  years.txtYear = {"2016", "2015"};
  struct Case {
    int query;
    bool boat;
    Filters filters;
    const char* refusal;
  };
  const std::vector<Case> cases = {
      {kTopCustomers, false, tick(kFilterYear),
       "Vehicle Filters cannot be used when using the Top Customers Query option."},
      {kBottomCustomers, true, tick(kFilterModel),
       "Boat Filters cannot be used when using the Bottom Customers Query option."},
      {kBottomCustomers, false, tick(kFilterCustomerType), ""},
      {kAllVehicles, false, mileage(2, "60000", "50000"),
       "Mileage Filter is not valid. Mileage From must be less than Mileage To"},
      {kAllVehicles, true, mileage(2, "60000", "50000"),
       "Hours Filter is not valid. Hours From must be less than Hours To"},
      {kAllVehicles, false, mileage(2, "50000", "50000"), ""},
      {kAllVehicles, false, mileage(1, "60000", "50000"), ""},
      {kAllVehicles, false, years, "Year Filter is not valid. Year From must be less than Year To"},
      {kAllVehicles, false, tick(kFilterModel),
       "You have chosen to filter specific Models, but have not entered a vehicle model."},
  };
  for (size_t i = 0; i < cases.size(); ++i)
    EXPECT_EQ(TextOf(CheckStepTwo(cases[i].query, cases[i].filters, cases[i].boat)), cases[i].refusal) << "case " << i;
}

}  // namespace
}  // namespace qbx
