// Procedure and parameters of every query, with and without filters.

#include "queries/query_parameters.h"

#include <gtest/gtest.h>

#include "queries/filter_notes.h"
#include "queries/filters.h"
#include "queries/query_catalogue.h"
#include "settings/options.h"

namespace qbx {
namespace {

/// "i" integer, "d" double, "b" Boolean, "t" text.
QChar TypeLetter(ValueType type) {
  return "nbidctz"[static_cast<int>(type)];
}

/// The parameters behind the four that every call has: name, type letter, value.
QString Tail(const ProcedureCall& call) {
  QStringList parts;
  for (size_t i = 4; i < call.parameters.size(); ++i) {
    const NamedValue& parameter = call.parameters[i];
    parts.append(parameter.name + '=' + TypeLetter(parameter.value.Type()) + parameter.value.ToText());
  }
  return parts.join(' ');
}

QueryOptions SomeOptions() {
  QueryOptions options;
  options.txtCriteria = "25abc";
  options.txtCriteriaStart = "1";
  options.txtMakes = "Audi, Ford ";
  options.cmbReminder = 1;
  options.FromDateText = "2026-01-31";
  options.ToDateText = "2026-02-28";
  return options;
}

TEST(QueryParameters, EveryQueryAndPass) {
  struct Case {
    int query;
    const char* procedure;
    const char* start;
    const char* filter;
  };
  const char* customers = "proc_Marketing_AddAllCustomers";
  const char* vehicles = "proc_Marketing_AddAllVehicles";
  for (const Case& c : {
           Case{kAllCustomers, customers, "", ""},
           Case{kLapsedCustomers, customers, "@Lapsed=i1", "@Lapsed=i1"},
           Case{kRecentCustomers, customers, "@Recent=i1", "@Recent=i1"},
           Case{kTopCustomers, customers, "@Top=i1 @Criteria=d25 @CriteriaStart=d1",
                "@Top=i1 @Criteria=d25 @CriteriaStart=d1 @Turnover=i0"},
           Case{kBottomCustomers, customers, "@Bottom=i1 @Criteria=d25 @CriteriaStart=d1",
                "@Bottom=i1 @Criteria=d25 @CriteriaStart=d1 @Turnover=i0"},
           Case{kAllVehicles, vehicles, "", ""},
           Case{kSpecificMakes, vehicles, "@Makes=tAudi,Ford", "@Makes=tAudi,Ford"},
           Case{kReminderDate, vehicles, "@Recall_ID=i2", "@Recall_ID=i2"},
           Case{kSpecificEngines, "proc_Marketing_AddAllEngines", "@Makes=tAudi,Ford", "@Makes=tAudi,Ford"},
       }) {
    const QueryRequest request{.CampaignTypeID = c.query, .campaignId = -7, .user = "JO"};
    const ProcedureCall start = BuildQueryCall(QueryPass::kStart, request, SomeOptions(), {});
    const ProcedureCall filter = BuildQueryCall(QueryPass::kFilter, request, SomeOptions(), {});
    EXPECT_EQ(start.procedure, c.procedure) << c.query;
    EXPECT_EQ(filter.procedure, c.procedure) << c.query;
    EXPECT_EQ(Tail(start), c.start) << c.query;
    EXPECT_EQ(Tail(filter), c.filter) << c.query;
    const std::vector<NamedValue> head(start.parameters.begin(), start.parameters.begin() + 4);
    EXPECT_EQ(head, (std::vector<NamedValue>{{"@CampaignID", -7},
                                             {"@UserID", QString("JO")},
                                             {"@FromDate", QString("2026-01-31")},
                                             {"@ToDate", QString("2026-02-28")}}));
  }
}

TEST(QueryParameters, FiltersComeBetweenTheQueryAndTheCampaignType) {
  Filters filters;
  filters.chkFilter = {true, true, true, true, true, true};
  filters.cmbFilter = {-1, 1, -1, 2, 3};
  filters.cmbData1 = QString(60, 'x');
  filters.cmbData2 = "Web";
  filters.txtMileage = {"1000 miles", "20000"};
  filters.txtYear = {"2010", "2015"};
  filters.txtModel = " A4 ";
  filters.chkIncludeOptedOut = true;
  QueryOptions options = SomeOptions();
  options.cmbType = "Promotions";
  const QueryRequest request{.CampaignTypeID = kLapsedCustomers, .campaignId = 3, .user = "JO"};

  const ProcedureCall call = BuildQueryCall(QueryPass::kFilter, request, options, filters);
  EXPECT_EQ(call.procedure, "proc_Marketing_AddAllVehicles");
  EXPECT_EQ(Tail(call),
            "@Lapsed=i1 @IgnoreMarketingSwitch=i1 @UseCustType=i1 @WhenCustType=i1 @ValueCustType=t" +
                QString(50, 'x') +
                " @UseEnquirySource=i1 @WhenEnquirySource=i-1 @ValueEnquirySource=tWeb @FilterMileage=i1 "
                "@FromMileage=d1000 @ToMileage=d20000 @FilterYear=i1 @FromYear=d2009 @ToYear=d2016 @FilterModel=i1 "
                "@ValueModel=t A4  @CampaignType=tPromotions @IncludeOptedOut=bTrue");

  const ProcedureCall start = BuildQueryCall(QueryPass::kStart, request, options, filters);
  EXPECT_EQ(start.procedure, "proc_Marketing_AddAllCustomers");
  EXPECT_EQ(Tail(start), "@Lapsed=i1 @CampaignType=tPromotions @IncludeOptedOut=bTrue");
}

TEST(QueryParameters, ConditionsOfYearAndMileage) {
  struct Case {
    FilterIndex filter;
    int condition;
    const char* sent;
  };
  for (const Case& c :
       {Case{kFilterYear, 0, "@FilterYear=i1 @FromYear=d2014 @ToYear=d2015"},
        Case{kFilterYear, 1, "@FilterYear=i1 @FromYear=d2015"}, Case{kFilterYear, 2, "@FilterYear=i1 @ToYear=d2014"},
        Case{kFilterYear, 3, "@FilterYear=i1 @FromYear=d2014 @ToYear=d2018"}, Case{kFilterYear, -1, "@FilterYear=i1"},
        Case{kFilterMileage, 0, "@FilterMileage=i1 @FromMileage=d60000"},
        Case{kFilterMileage, 1, "@FilterMileage=i1 @ToMileage=d60000"},
        Case{kFilterMileage, 2, "@FilterMileage=i1 @FromMileage=d60000 @ToMileage=d0"},
        Case{kFilterMileage, -1, "@FilterMileage=i1"}}) {
    Filters filters;
    filters.chkFilter[c.filter] = true;
    filters.cmbFilter[c.filter] = c.condition;
    filters.txtYear = {"2015", "2017"};
    filters.txtMileage = {"60000", ""};
    const ProcedureCall call =
        BuildQueryCall(QueryPass::kFilter, {.CampaignTypeID = kAllVehicles, .campaignId = 1, .user = {}}, {}, filters);
    EXPECT_EQ(Tail(call), c.sent) << c.filter << " " << c.condition;
  }
}

TEST(Filters, SayWhatTheyDoBesideTheirControls) {
  struct Case {
    FilterIndex filter;
    int condition;
    const char* first;
    const char* second;
    const char* note;
  };
  for (const Case& c : {Case{kFilterMileage, 0, "80,000", "", ""}, Case{kFilterMileage, 1, "80k", "", "Read as 80."},
                        Case{kFilterMileage, 2, "80,000", "ninety", "The first number is above the second."},
                        Case{kFilterYear, 3, "", "2015 or so", "Read as 0 and 2015."},
                        Case{kFilterYear, -1, "2015", "", "Not applied: choose a condition."},
                        Case{kFilterCustomerType, 0, " ", "", "Customers without a type."},
                        Case{kFilterEnquirySource, 1, "", "", "Customers with an enquiry source."},
                        Case{kFilterEnquirySource, 1, "Web", "", ""}}) {
    Filters filters;
    filters.cmbFilter[c.filter] = c.condition;
    filters.cmbData1 = filters.cmbData2 = c.first;
    filters.txtMileage = filters.txtYear = {c.first, c.second};
    EXPECT_EQ(FilterNote(filters, c.filter), "") << "off";
    filters.chkFilter[c.filter] = true;
    EXPECT_EQ(FilterNote(filters, c.filter), c.note) << c.filter << " " << c.first;
  }
}

TEST(Filters, AHiddenMileageFilterIsNeitherSentNorCounted) {
  Filters filters;
  filters.chkFilter[kFilterMileage] = true;
  filters.mileageVisible = false;
  const QueryRequest request{.CampaignTypeID = kAllCustomers, .campaignId = 1, .user = {}};
  const ProcedureCall call = BuildQueryCall(QueryPass::kFilter, request, {}, filters);
  EXPECT_EQ(call.procedure, "proc_Marketing_AddAllCustomers");
  EXPECT_EQ(Tail(call), "");
}

TEST(Filters, OptedOutCustomersNeedTheCompanysConsent) {
  Options options;
  Filters filters;
  filters.chkIncludeOptedOut = true;
  EXPECT_FALSE(GuardIncludeOptedOut(filters, options));
  EXPECT_TRUE(filters.chkIncludeOptedOut);

  options.Only_Send_Comms_When_Opted_In = true;
  const std::optional<Message> message = GuardIncludeOptedOut(filters, options);
  ASSERT_TRUE(message);
  EXPECT_EQ(message->title, "Your settings prevent this option");
  EXPECT_EQ(message->icon, MessageIcon::kInformation);
  EXPECT_FALSE(filters.chkIncludeOptedOut);
  EXPECT_FALSE(GuardIncludeOptedOut(filters, options));
}

}  // namespace
}  // namespace qbx
