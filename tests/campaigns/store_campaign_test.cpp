#include "campaigns/store_campaign.h"

#include <gtest/gtest.h>

#include "support/embedded_host.h"

namespace qbx {
namespace {

struct StoreCampaignTest : testing::Test {
  bool Store(const QString& name) { return StoreCampaign(host.statements, storage, campaign, host.ui, name, "About"); }

  test::EmbeddedHost host;
  CurrentCampaign campaign;
  CampaignStorage storage{host.statements, host.events, host.context, host.diagnostics, campaign};
};

TEST_F(StoreCampaignTest, ACampaignDeletedMeanwhileIsKeptAsANewOneWhenWanted) {
  storage.InitialiseCampaign();
  ASSERT_TRUE(Store("Mine"));
  const int id = campaign.record.ID;
  host.Run("DELETE FROM Marketing_Campaigns");

  host.ui.Answer("Save it as a new Campaign?", MessageAnswer::kNo);
  EXPECT_FALSE(Store("Mine"));
  EXPECT_EQ(campaign.record.ID, id);

  host.ui.Answer("Save it as a new Campaign?", MessageAnswer::kYes);
  EXPECT_TRUE(Store("Mine"));
  EXPECT_EQ(host.Rows(QString("SELECT Campaign_Name FROM Marketing_Campaigns WHERE ID = %1").arg(campaign.record.ID)),
            QStringList("Mine"));
}

TEST_F(StoreCampaignTest, AFailingDatabaseIsNotTakenForADeletedCampaign) {
  storage.InitialiseCampaign();
  ASSERT_TRUE(Store("Mine"));
  host.Run("DROP TABLE Marketing_Campaigns");
  EXPECT_FALSE(Store("Typed"));
  EXPECT_EQ(host.ui.Messages().size(), 1u) << "the failure alone, no question";
  EXPECT_EQ(campaign.record.Campaign_Name, "Typed") << "what was typed is kept";
  EXPECT_TRUE(campaign.CampaignChanged) << "and asked about before it is lost";
}

}  // namespace
}  // namespace qbx
