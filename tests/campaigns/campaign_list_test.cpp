#include "campaigns/campaign_list.h"

#include <gtest/gtest.h>

#include "support/embedded_host.h"
#include "util/date_text.h"

namespace qbx {
namespace {

TEST(CampaignListTest, ShowsDatesToTheMinuteAndNullAsNothing) {
  test::EmbeddedHost host;
  host.Run(
      "INSERT INTO Marketing_Campaigns (ID, Campaign_Name, Last_Run, Created_Date, Campaign_Description, Created_By) "
      "VALUES "
      "(7, 'Winter', '2026-01-02 03:04:59', '2025-12-31 23:59:00', 'Cold', 'ANN'), (8, 'Zero', NULL, NULL, NULL, NULL)");
  const auto rows = LoadCampaigns(host.statements);
  ASSERT_TRUE(rows && rows->size() == 2);
  const auto joined = [](const CampaignListRow& row) {
    return QStringList{QString::number(row.ID),      row.Campaign_Name,        MinuteText(row.Last_Run),
                       MinuteText(row.Created_Date), row.Campaign_Description, row.Created_By}
        .join(u'|');
  };
  EXPECT_EQ(joined(rows->front()), "7|Winter|02/01/2026 03:04|31/12/2025 23:59|Cold|ANN");
  EXPECT_EQ(joined(rows->back()), "8|Zero||||");
}

TEST(CampaignListTest, AFailureIsReportedAndIsNotAnEmptyList) {
  test::EmbeddedHost host;
  EXPECT_TRUE(LoadCampaigns(host.statements)->empty());
  host.Run("DROP TABLE Marketing_Campaigns_History; DROP TABLE Marketing_Campaigns");
  EXPECT_FALSE(LoadCampaigns(host.statements));
  EXPECT_FALSE(LoadCampaignHistory(host.statements, true));
  EXPECT_EQ(host.ui.Messages().size(), 2u);
}

TEST(CampaignListTest, Names) {
  EXPECT_FALSE(CampaignNameIsValid(""));
  EXPECT_FALSE(CampaignNameIsValid("   "));
  EXPECT_TRUE(CampaignNameIsValid(" a "));

  const QString forty(40, u'n');
  EXPECT_EQ(CampaignCopyName(forty + "41"), forty);
  EXPECT_EQ(CampaignCopyName("   "), "   ");
  EXPECT_EQ(CampaignCopyName(QString(39, u'n') + "\U0001F697"), QString(39, u'n'));
}

}  // namespace
}  // namespace qbx
