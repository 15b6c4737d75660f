#include "campaigns/store_campaign.h"

#include <gtest/gtest.h>

#include "support/embedded_host.h"

namespace qbx {
namespace {

struct StoreCampaignTest : testing::Test {
  bool Store(const QString& name) {
    return StoreCampaign(host.statements, storage, campaign, host.ui, name, u"About"_qs);
  }

  test::EmbeddedHost host;
  CurrentCampaign campaign;
  CampaignStorage storage{host.statements, host.events, host.context, host.diagnostics, campaign};
};

TEST_F(StoreCampaignTest, AddsOnceAndUpdatesAfterwards) {
  storage.InitialiseCampaign();
  EXPECT_TRUE(Store(u" It's \"new\" "_qs));
  const int id = campaign.record.ID;
  EXPECT_TRUE(Store(u"Renamed"_qs));
  EXPECT_EQ(campaign.record.ID, id);
  EXPECT_EQ(host.Rows(u"SELECT ID, Campaign_Name, Campaign_Description FROM Marketing_Campaigns"_qs),
            QStringList(QString::number(id) + u"|Renamed|About"_qs));
  EXPECT_TRUE(host.ui.Messages().empty());
}

TEST_F(StoreCampaignTest, ACampaignDeletedMeanwhileIsKeptAsANewOneWhenWanted) {
  storage.InitialiseCampaign();
  ASSERT_TRUE(Store(u"Mine"_qs));
  const int id = campaign.record.ID;
  host.Run(u"DELETE FROM Marketing_Campaigns"_qs);

  host.ui.Answer(u"Save it as a new Campaign?"_qs, MessageAnswer::kNo);
  EXPECT_FALSE(Store(u"Mine"_qs));
  EXPECT_EQ(campaign.record.ID, id);

  host.ui.Answer(u"Save it as a new Campaign?"_qs, MessageAnswer::kYes);
  EXPECT_TRUE(Store(u"Mine"_qs));
  EXPECT_EQ(host.Rows(u"SELECT Campaign_Name FROM Marketing_Campaigns WHERE ID = %1"_qs.arg(campaign.record.ID)),
            QStringList(u"Mine"_qs));
}

TEST_F(StoreCampaignTest, AFailingDatabaseIsNotTakenForADeletedCampaign) {
  storage.InitialiseCampaign();
  ASSERT_TRUE(Store(u"Mine"_qs));
  host.Run(u"DROP TABLE Marketing_Campaigns"_qs);
  EXPECT_FALSE(Store(u"Typed"_qs));
  EXPECT_EQ(host.ui.Messages().size(), 1u) << "the failure alone, no question";
  EXPECT_EQ(campaign.record.Campaign_Name, u"Typed"_qs) << "what was typed is kept";
  EXPECT_TRUE(campaign.CampaignChanged) << "and asked about before it is lost";
}

}  // namespace
}  // namespace qbx
