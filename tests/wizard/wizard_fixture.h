// The wizard without windows, on a small host database.

#pragma once

#include "queries/query_catalogue.h"
#include "support/embedded_host.h"
#include "support/fakes.h"
#include "wizard/steps.h"

namespace qbx::test {

class Wizard : public testing::Test {
 protected:
  Wizard() {
    host_.Run("INSERT INTO Customers (Customer, Lastname) VALUES (1, 'One'), (2, 'Two')");
    host_.Run("INSERT INTO Customer_Types VALUES (1, 'Retail'), (2, 'Trade')");
    host_.Run("INSERT INTO Makes VALUES (1, 'Audi', 0), (2, 'Ford', 0), (3, 'Volvo Penta', 5)");
    options_.MOT_Reminder_Name = "MOT";
  }

  /// A new campaign with all customers as its rows.
  void SelectEverybody() {
    steps_.StartNewCampaign();
    selection_.NodeClick(kAllCustomers);
    ASSERT_TRUE(steps_.NextStep(0).Moved());
  }
  [[nodiscard]] QStringList Rows(int campaign) {
    return host_.Rows(
        QString("SELECT Customer FROM [Campaign Results] WHERE CampaignID = %1 ORDER BY 1").arg(campaign));
  }

  EmbeddedHost host_;
  Options options_;
  EditionFlags edition_;
  QString user_ = "TESTER";
  CurrentCampaign campaign_;
  WizardState state_;
  CampaignStorage storage_{host_.statements, host_.events, host_.context, host_.diagnostics, campaign_};
  Counters counters_{host_.statements};
  CreditEstimate estimate_{host_.statements, host_.diagnostics};
  ResultsView results_{host_.statements, counters_, host_.diagnostics};
  FirstRows firstRows_{host_.statements};
  QueryProcessor queries_{host_.statements, options_,          user_,          campaign_,        state_.options,
                          state_.filters,   state_.lblRecords, state_.leftOut, host_.diagnostics};
  QuerySelection selection_{host_.statements, campaign_, state_, options_, edition_, host_.diagnostics};
  CampaignSettings settings_{host_.statements, campaign_, state_, selection_, results_, host_.diagnostics};
  FakeHostInfo computer_;
  ReplaceGuard guard_{host_.connection, computer_, host_.diagnostics};
  ResultsLog resultsLog_{host_.diagnostics.clock, host_.diagnostics.ui};
  int optionLoads_ = 0;
  WizardSteps steps_{{.campaign = campaign_,
                      .state = state_,
                      .storage = storage_,
                      .settings = settings_,
                      .queries = queries_,
                      .results = results_,
                      .firstRows = firstRows_,
                      .counters = counters_,
                      .estimate = estimate_,
                      .events = host_.events,
                      .guard = guard_,
                      .resultsLog = resultsLog_,
                      .options = options_,
                      .edition = edition_,
                      .loadOptions = [this] { ++optionLoads_; }},
                     host_.diagnostics};
};

}  // namespace qbx::test
