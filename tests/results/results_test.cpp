// Rows and counters of a campaign.

#include <gmock/gmock.h>

#include "results/counters.h"
#include "results/results_view.h"
#include "settings/options.h"
#include "settings/startup_values.h"
#include "support/embedded_host.h"

namespace qbx {
namespace {

TEST(Results, CounterLabels) {
  const CounterLabels labels = MakeCounterLabels(
      {.letters = 1, .sms = 12000, .smsSent = 2, .emails = 3, .emailsSent = 0}, {.inAll = 120, .sent = 90, .toGo = 28});
  EXPECT_EQ(labels.lblLetters, "Letters to Generate: 1");
  EXPECT_EQ(labels.lblSMS0, "SMS's to Send: 12000");
  EXPECT_EQ(labels.lblSMS1, "Sent: 2 / 12000");
  EXPECT_EQ(labels.lblSMS2, "Credit Cost: 28 (120 in all)");
  EXPECT_EQ(labels.lblEmail0, "Email's to Send: 3");
  EXPECT_EQ(labels.lblEmail1, "Sent: 0 / 3");
}

class ResultRows : public testing::Test {
 protected:
  ResultRows() {
    host_.Run(
        "INSERT INTO [Campaign Results] (RecordID, CampaignID, Customer, Send_SMS, Send_Email, Send_Letter, Processed) "
        "VALUES (11, 5, 1, 1, 0, 0, 1), (12, 5, 2, 1, 1, 0, 0), (13, 5, 3, 0, 0, 1, 0), (14, 6, 4, 1, 1, 1, 1)");
  }

  test::EmbeddedHost host_;
  Counters counters_{host_.statements};
  ResultsView view_{host_.statements, counters_, host_.diagnostics};
};

TEST_F(ResultRows, DisplayReadsTheCampaignsRowsAndCounters) {
  EXPECT_EQ(view_.CountText(), "0 records ");
  int displayed = 0;
  view_.OnDisplayed([&displayed] { ++displayed; });
  ASSERT_TRUE(view_.DisplayResults(5));
  EXPECT_EQ(displayed, 1);
  EXPECT_EQ(view_.CountText(), "3 records ");
  EXPECT_EQ(counters_.Values(), (CounterValues{.letters = 1, .sms = 2, .smsSent = 1, .emails = 1, .emailsSent = 0}));
  for (const char* column : {"RecordID", "SMS Opt-In", "Email Opt-In", "Letter Opt-In"})
    EXPECT_GE(view_.Rows().ColumnIndex(column), 0) << column;

  ASSERT_TRUE(view_.DisplayResults(99));
  EXPECT_EQ(view_.CountText(), "0 records ");
  EXPECT_EQ(counters_.Values(), CounterValues());
}

TEST_F(ResultRows, AFailureKeepsTheCampaignsRowsAndGivesUpAnothers) {
  ASSERT_TRUE(view_.DisplayResults(5));
  int displayed = 0;
  view_.OnDisplayed([&displayed] { ++displayed; });
  host_.Run("DELETE FROM _Procedures WHERE Name IN ('proc_selp_Campaign_Results', 'proc_selp_Results_Counters')");
  host_.engine.BreakSessions();  // the new session has not read them before
  EXPECT_FALSE(view_.DisplayResults(5));
  EXPECT_EQ(view_.CountText(), "3 records ");
  EXPECT_EQ(displayed, 0);
  EXPECT_FALSE(view_.DisplayResults(6));
  EXPECT_EQ(view_.CountText(), "0 records ");
  EXPECT_EQ(displayed, 1);
  EXPECT_EQ(view_.CampaignId(), 6);
  EXPECT_EQ(counters_.Values().sms, 2);
  EXPECT_EQ(host_.ui.Messages().size(), 4U);
}

}  // namespace
}  // namespace qbx
