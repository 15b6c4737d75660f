// Whose a draft is, where several programs of one user run.

#include <gtest/gtest.h>

#include "platform/safe_file.h"
#include "wizard/draft_offer.h"
#include "wizard_fixture.h"

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

using DraftOffers = test::Wizard;

TEST_F(DraftOffers, AreMadeByOneOfTwoProgramsThatStartAtOnce) {
  Desk killed(host_, 3);
  killed.state.txtSMS = "Three";
  Desk one(host_, 1);
  ASSERT_TRUE(killed.keeper.Write());
  DraftOffer offer({.drafts = one.drafts,
                    .keeper = one.keeper,
                    .statements = host_.statements,
                    .storage = storage_,
                    .campaign = campaign_,
                    .state = one.state,
                    .settings = settings_,
                    .steps = steps_},
                   host_.diagnostics);
  host_.ui.Answer("The program ended while you were writing", MessageAnswer::kCancel);
  std::optional<FileLock> other(std::in_place, one.drafts.OfferLock(), 0);
  EXPECT_FALSE(offer.Offer());
  EXPECT_TRUE(host_.ui.Messages().empty());
  other.reset();
  EXPECT_FALSE(offer.Offer());
  EXPECT_EQ(host_.ui.Messages().size(), 1U);
}

}  // namespace
}  // namespace qbx
