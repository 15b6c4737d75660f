// The commands of the wizard, from a new campaign to its last tab.

#include "wizard/steps.h"

#include <gtest/gtest.h>

#include "wizard/wizard_fixture.h"

namespace qbx {
namespace {

using test::Wizard;

TEST_F(Wizard, ANewCampaignGoesThroughTheSteps) {
  steps_.StartNewCampaign();
  EXPECT_LT(campaign_.record.ID, 0);
  EXPECT_FALSE(campaign_.CampaignChanged);
  EXPECT_FALSE(state_.options.dteDate[0].isValid());
  EXPECT_EQ(state_.selectedNode, kCustomerGroup);
  EXPECT_EQ(state_.filterLists[kFilterCustomerType].size(), 2U);

  EXPECT_FALSE(steps_.NextStep(0).Moved());
  EXPECT_FALSE(steps_.NextStep(1).Moved());
  EXPECT_FALSE(steps_.RunCampaign().Moved());
  EXPECT_EQ(
      host_.ui.MessageTexts(),
      QStringList({"Invalid Campaign Type Selected.",
                   "Please go to Step 1 and click Next to complete that step before continuing onto another step.",
                   "Step 1 has not been completed. Please go to tab 1. Query / Report Starting Point and click "
                   "'Next >'."}));

  selection_.NodeClick(kAllCustomers);
  EXPECT_TRUE(campaign_.CampaignChanged);
  EXPECT_EQ(steps_.NextStep(0).selectTab, 2);
  state_.filters.chkIncludeOptedOut = true;
  const StepResult second = steps_.NextStep(1);
  EXPECT_EQ(second.selectTab, 3);
  EXPECT_TRUE(second.notice);
  EXPECT_EQ(results_.CountText(), "2 records ");
  EXPECT_EQ(steps_.NextStep(2).selectTab, 4);
  EXPECT_EQ(steps_.RunCampaign().selectTab, 5);
  EXPECT_EQ(optionLoads_, 2);
  EXPECT_EQ(steps_.BackStep(1).selectTab, 1);
  EXPECT_FALSE(steps_.BackStep(0).Moved());
  EXPECT_EQ(Events(), QStringList({"Clicked: Next(0)", "Clicked: Next(1)", "Clicked: Next(0)", "Clicked: Next(1)",
                                   "Clicked: Next(2)", "Clicked: Back(1)"}));
}

TEST_F(Wizard, SentRowsAreResetOnlyAfterAYes) {
  steps_.StartNewCampaign();
  selection_.NodeClick(kAllCustomers);
  ASSERT_TRUE(steps_.NextStep(0).Moved());
  host_.Run("UPDATE [Campaign Results] SET Send_SMS = 1, Processed = 1 WHERE Customer = 1");
  steps_.TabOpened(5);
  const QString sent = "SELECT COUNT(*) FROM [Campaign Results] WHERE Processed = 1";
  host_.ui.Answer("Do you want to reload the results and reset the Processed Status?", MessageAnswer::kNo);
  EXPECT_FALSE(steps_.NextStep(1).Moved());
  EXPECT_EQ(host_.Ask(sent).ToInt(), 1);
  EXPECT_EQ(host_.ui.Messages().back().question, Question::kResetProcessedResults);
  host_.ui.Answer("Do you want to reload the results and reset the Processed Status?", MessageAnswer::kYes);
  EXPECT_TRUE(steps_.NextStep(1).Moved());
  EXPECT_EQ(host_.Ask(sent).ToInt(), 0);
}

TEST_F(Wizard, AFailedQueryCompletesNoStep) {
  steps_.StartNewCampaign();
  selection_.NodeClick(kAllCustomers);
  host_.Run("DELETE FROM _Procedures WHERE Name = 'proc_Marketing_AddAllCustomers'");
  EXPECT_FALSE(steps_.NextStep(0).Moved());
  EXPECT_FALSE(state_.bStepComplete[1]);
}

TEST_F(Wizard, RowsThatCannotBeReadCompleteNoStep) {
  steps_.StartNewCampaign();
  selection_.NodeClick(kAllCustomers);
  ASSERT_TRUE(steps_.NextStep(0).Moved());
  host_.Run("DELETE FROM _Procedures WHERE Name = 'proc_selp_Campaign_Results'");
  host_.engine.BreakSessions();  // the new session has not read it before
  EXPECT_FALSE(steps_.NextStep(1).Moved());
  EXPECT_FALSE(state_.bStepComplete[2]);
}

TEST_F(Wizard, MakesAreChosenFromTheHostsListAndTyped) {
  edition_.boat = true;
  steps_.StartNewCampaign();
  selection_.NodeClick(kSpecificMakes);
  ASSERT_EQ(state_.lstMakes.size(), 2U);
  state_.options.txtMakes = "Trabant";
  selection_.MakesClick({true, true});
  EXPECT_EQ(state_.options.txtMakes, "Audi, Ford, Trabant");
  selection_.NodeClick(kSpecificEngines);
  EXPECT_EQ(state_.options.txtMakes, "");
  ASSERT_EQ(state_.lstMakes.size(), 1U);
  EXPECT_FALSE(state_.filters.mileageVisible);
  selection_.NodeClick(kAllVehicles);
  EXPECT_TRUE(state_.filters.mileageVisible);
}

}  // namespace
}  // namespace qbx
