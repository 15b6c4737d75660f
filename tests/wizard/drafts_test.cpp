// Whose a draft is, where several programs of one user run.

#include <gtest/gtest.h>

#include "support/embedded_host.h"
#include "support/fakes.h"
#include "wizard/draft_keeper.h"

namespace qbx {
namespace {

struct Desk {
  Desk(test::EmbeddedHost& host, qint64 process) : host_(host) {
    startup.ProgramFolder = host.folder.Path() + u'/';
    startup.user = "../Jo-Ann/é";
    startup.databaseName = "Garage";
    computer.processId = process;
    computer.processes = {{1, 10}, {2, 20}};
  }
  [[nodiscard]] size_t LeftBehind() const { return drafts.LeftBehind().size(); }
  [[nodiscard]] qsizetype Files() const { return host_.folder.Names().filter("MARKETING-DRAFT").size(); }

  test::EmbeddedHost& host_;
  StartupValues startup;
  test::FakeHostInfo computer;
  WizardState state;
  CurrentCampaign campaign;
  Drafts drafts{startup, computer, host_.diagnostics.log};
  DraftKeeper keeper{state, campaign, drafts, host_.diagnostics};
};

TEST(Drafts, AreLeftToAProgramThatRunsAndOfferedOnceItIsGone) {
  test::EmbeddedHost host;
  Desk one(host, 1);
  Desk two(host, 2);
  one.state.txtSMS = "One";
  two.state.txtSMS = "Two";
  ASSERT_TRUE(one.keeper.Write() && two.keeper.Write());
  one.keeper.Saved();
  EXPECT_EQ(one.Files(), 1);
  EXPECT_EQ(one.LeftBehind(), 0U);

  one.computer.processes[2] = 21;  // another process has its number now
  ASSERT_EQ(one.LeftBehind(), 1U);
  EXPECT_EQ(one.drafts.LeftBehind().front().texts.sms, "Two");
  one.startup.databaseName = "North";
  EXPECT_EQ(one.LeftBehind(), 0U);
}

}  // namespace
}  // namespace qbx
