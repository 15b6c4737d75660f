// Query runs against a small garage: what stays, what is shown, and that a run is all or nothing.

#include "queries/process_query.h"

#include <gmock/gmock.h>

#include "campaigns/campaign_record.h"
#include "queries/query_catalogue.h"
#include "settings/options.h"
#include "support/embedded_host.h"

namespace qbx {
namespace {

using testing::ElementsAre;

class QueryRun : public testing::Test {
 protected:
  QueryRun() {
    campaign_.record.ID = -3;
    campaign_.record.CampaignTypeID = kAllCustomers;
    host_.Run(
        "INSERT INTO Customers (Customer, Lastname, Consent_Response, Can_Send_SMS, Can_Send_Email, Can_Send_Letter) "
        "VALUES (1, 'Asked', 0, 1, 1, 1), (2, 'Never', NULL, 1, 1, 1), (3, 'Nowhere', 1, NULL, NULL, NULL), "
        "(4, 'Text', 1, 1, 0, NULL), (5, 'Letter', 1, NULL, NULL, 1), (6, 'Silent', 1, 0, 0, 0)");
    host_.Run(
        "INSERT INTO Vehicles (VehicleID, Vehicle, Customer, Make, Year) VALUES (1, 'AB01', 4, 'Audi', 2015), "
        "(2, 'CD02', 5, 'Ford', 2010), (3, 'EF03', 1, 'Audi', 2015)");
  }

  QStringList Rows() {
    return host_.Rows("SELECT Customer FROM [Campaign Results] WHERE CampaignID = -3 ORDER BY Customer");
  }
  /// Many customers who never consented, so that a run takes a while.
  void AddManyCustomers() {
    host_.Run("INSERT INTO Customers (Customer, Lastname) VALUES (1000, 'Many')");
    for (int many = 1; many < 30000; many *= 2)
      host_.Run(
          QString(
              "INSERT INTO Customers (Customer, Lastname) SELECT Customer + %1, Lastname FROM Customers WHERE Customer >= 1000")
              .arg(many));
  }
  void TickYear(const char* year) {
    filters_.chkFilter[kFilterYear] = true;
    filters_.cmbFilter[kFilterYear] = 0;
    filters_.txtYear[0] = year;
  }

  test::EmbeddedHost host_;
  Options options_;
  QString user_ = "JO";
  CurrentCampaign campaign_;
  QueryOptions queryOptions_;
  Filters filters_;
  RecordLabels records_ = {"before 0", "before 1"};
  LeftOut leftOut_;
  QueryProcessor processor_{host_.statements, options_, user_,    campaign_,        queryOptions_,
                            filters_,         records_, leftOut_, host_.diagnostics};
};

TEST_F(QueryRun, StepOneFillsTheCampaignAndSaysWhatItDoes) {
  EXPECT_EQ(processor_.ProcessQuery(0, false), QueryOutcome::kDone);
  EXPECT_EQ(Rows(), QStringList({"1", "2", "3", "4", "5", "6"}));
  EXPECT_THAT(records_, ElementsAre("Records found: 6", "Records found: 6"));
  EXPECT_EQ(host_.ui.StatusTexts(), QStringList({"Processing the Query...", "Selecting the records..."}));
  EXPECT_TRUE(host_.ui.Statuses().back().showCancel);
  EXPECT_EQ(host_.ui.PausedFor(), 160 + 250 + 160);
  EXPECT_EQ(host_.connection.CommandTimeout(), 40);
  EXPECT_FALSE(host_.ui.StatusVisible());
  EXPECT_FALSE(host_.ui.Busy());
  EXPECT_EQ(host_.Ask("SELECT DISTINCT UserID FROM [Campaign Results]").ToText(), "JO");
  EXPECT_EQ(processor_.ProcessQuery(0, false), QueryOutcome::kDone);
  EXPECT_EQ(Rows().size(), 6);
}

TEST_F(QueryRun, RowsWithoutConsentAreDeleted) {
  struct Case {
    bool onlyOptedIn;
    bool platform;
    QStringList rows;
  };
  for (const Case& c : {Case{false, true, {"1", "2", "3", "4", "5", "6"}}, Case{true, false, {"3", "4", "5", "6"}},
                        Case{true, true, {"4", "5"}}}) {
    options_.Only_Send_Comms_When_Opted_In = c.onlyOptedIn;
    options_.Using_Vrelo = c.platform;
    EXPECT_EQ(processor_.ProcessQuery(0, false), QueryOutcome::kDone);
    EXPECT_EQ(Rows(), c.rows);
    EXPECT_THAT(records_, ElementsAre("Records found: 6", "Records found: " + QString::number(c.rows.size())));
  }
}

TEST_F(QueryRun, RefreshCountsTheStartUnprunedAndTheFilteredPruned) {
  options_.Only_Send_Comms_When_Opted_In = true;
  TickYear("2015");
  EXPECT_EQ(processor_.Refresh(), QueryOutcome::kDone);
  EXPECT_EQ(Rows(), QStringList({"4"}));
  EXPECT_THAT(records_, ElementsAre("Records found: 6", "Records found: 1"));
  EXPECT_EQ(host_.ui.StatusTexts(), QStringList({"Applying Filters to the results...", "Processing the Query..."}));
}

TEST_F(QueryRun, AFailureBetweenThePassesLeavesEverythingAsItWas) {
  ASSERT_EQ(processor_.ProcessQuery(0, false), QueryOutcome::kDone);
  const QStringList before = host_.Rows("SELECT RecordID FROM [Campaign Results]");
  host_.Run("DELETE FROM Customers WHERE Customer = 1");
  host_.Run("DELETE FROM _Procedures WHERE Name = 'proc_Marketing_AddAllVehicles'");
  TickYear("2015");
  host_.ui.Clear();

  EXPECT_EQ(processor_.Refresh(), QueryOutcome::kFailed);
  EXPECT_EQ(host_.Rows("SELECT RecordID FROM [Campaign Results]"), before);
  EXPECT_THAT(records_, ElementsAre("Records found: 6", "Records found: 6"));
  ASSERT_EQ(host_.ui.Messages().size(), 1U);
  EXPECT_TRUE(host_.ui.MessageTexts()[0].startsWith("An unexpected error occured."));
  EXPECT_TRUE(host_.Log().contains("(in ProcessQuery)"));
  EXPECT_FALSE(host_.ui.StatusVisible());
  EXPECT_FALSE(host_.ui.Busy());
}

TEST_F(QueryRun, AFailureWhileRowsAreDeletedLeavesEverythingAsItWas) {
  ASSERT_EQ(processor_.ProcessQuery(0, false), QueryOutcome::kDone);
  host_.Run(
      "CREATE TRIGGER Kept BEFORE DELETE ON [Campaign Results] WHEN old.Customer = 6 AND "
      "(SELECT COUNT(*) FROM [Campaign Results]) <= 3 BEGIN SELECT RaiseError(50000, 'This row stays.'); END");
  options_.Only_Send_Comms_When_Opted_In = options_.Using_Vrelo = true;
  EXPECT_EQ(processor_.ProcessQuery(1, false), QueryOutcome::kFailed);
  EXPECT_EQ(Rows().size(), 6);
  EXPECT_TRUE(host_.ui.MessageTexts().join("").contains("This row stays."));
}

TEST_F(QueryRun, CancelWhileRowsAreWrittenOrDeletedRollsBack) {
  AddManyCustomers();
  options_.Only_Send_Comms_When_Opted_In = true;
  for (const int pumpsBefore : {1, 6}) {
    host_.ui.Clear();
    host_.ui.OnPump([this, pumpsBefore] {
      const bool working = !host_.ui.Statuses().empty() && host_.ui.Statuses().back().message.startsWith("Selecting");
      if (working && host_.ui.PumpCount() > 3 + pumpsBefore) host_.ui.PressCancel();
    });
    EXPECT_EQ(processor_.ProcessQuery(0, false), QueryOutcome::kCancelled) << pumpsBefore;
    EXPECT_EQ(Rows(), QStringList()) << pumpsBefore;
    EXPECT_THAT(records_, ElementsAre("before 0", "before 1"));
  }
  host_.ui.OnPump({});
  EXPECT_EQ(processor_.ProcessQuery(0, false), QueryOutcome::kDone);
  EXPECT_EQ(Rows(), QStringList({"3", "4", "5", "6"}));
}

TEST_F(QueryRun, ALostConnectionIsOpenedAgainAndTheRunRepeated) {
  ASSERT_EQ(processor_.ProcessQuery(0, false), QueryOutcome::kDone);
  host_.Run("INSERT INTO Customers (Customer, Lastname) VALUES (7, 'New')");
  host_.engine.BreakSessions();
  EXPECT_EQ(processor_.ProcessQuery(1, false), QueryOutcome::kDone);
  EXPECT_EQ(Rows().size(), 7);
  EXPECT_THAT(records_, ElementsAre("Records found: 6", "Records found: 7"));
  EXPECT_TRUE(host_.ui.Messages().empty());
}

TEST_F(QueryRun, AGroupNodeAndAMissingDateAreRefused) {
  for (const int query : {kCustomerGroup, kVehicleGroup, kNoQuery}) {
    campaign_.record.CampaignTypeID = query;
    EXPECT_EQ(processor_.ProcessQuery(1, false), QueryOutcome::kFailed);
  }
  campaign_.record.CampaignTypeID = kLapsedCustomers;
  EXPECT_EQ(processor_.ProcessQuery(1, false), QueryOutcome::kFailed);
  EXPECT_EQ(host_.ui.MessageTexts().last(), "Dates are not valid.");

  // A campaign that was loaded has dates, but no texts of them yet.
  queryOptions_.dteDate = {QDate(2026, 1, 2), QDate(2025, 7, 2)};
  EXPECT_EQ(processor_.ProcessQuery(1, false), QueryOutcome::kDone);
  EXPECT_EQ(queryOptions_.FromDateText, "2026-01-02");
}

}  // namespace
}  // namespace qbx
