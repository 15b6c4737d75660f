// The commands of the wizard when they fail.

#include "wizard/steps.h"

#include <gtest/gtest.h>

#include "wizard/wizard_fixture.h"

namespace qbx {
namespace {

using test::Wizard;

TEST_F(Wizard, AFailedQueryCompletesNoStep) {
  steps_.StartNewCampaign();
  selection_.NodeClick(kAllCustomers);
  host_.Run("DELETE FROM _Procedures WHERE Name = 'proc_Marketing_AddAllCustomers'");
  EXPECT_FALSE(steps_.NextStep(0).Moved());
  EXPECT_FALSE(state_.bStepComplete[1]);
}

TEST_F(Wizard, RowsThatCannotBeReadCompleteNoStep) {
  SelectEverybody();
  host_.Run("DELETE FROM _Procedures WHERE Name = 'proc_selp_Campaign_Results'");
  host_.engine.BreakSessions();  // the new session has not read it before
  EXPECT_FALSE(steps_.NextStep(1).Moved());
  EXPECT_FALSE(state_.bStepComplete[2]);
}

}  // namespace
}  // namespace qbx
