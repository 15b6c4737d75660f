#include "campaigns/campaign_list.h"

#include <gtest/gtest.h>

#include "support/embedded_host.h"
#include "util/date_text.h"

namespace qbx {
namespace {

TEST(CampaignListTest, ShowsDatesToTheMinuteAndNullAsNothing) {
  test::EmbeddedHost host;
  host.Run(
      u"INSERT INTO Marketing_Campaigns (ID, Campaign_Name, Last_Run, Created_Date, Campaign_Description, Created_By) "
      u"VALUES "
      "(7, 'Winter', '2026-01-02 03:04:59', '2025-12-31 23:59:00', 'Cold', 'ANN'), (8, 'Zero', NULL, NULL, NULL, NULL)"_qs);
  const auto rows = LoadCampaigns(host.statements);
  ASSERT_TRUE(rows && rows->size() == 2);
  const auto joined = [](const CampaignListRow& row) {
    return QStringList{QString::number(row.ID),      row.Campaign_Name,        MinuteText(row.Last_Run),
                       MinuteText(row.Created_Date), row.Campaign_Description, row.Created_By}
        .join(u'|');
  };
  EXPECT_EQ(joined(rows->front()), u"7|Winter|02/01/2026 03:04|31/12/2025 23:59|Cold|ANN"_qs);
  EXPECT_EQ(joined(rows->back()), u"8|Zero||||"_qs);
}

TEST(CampaignListTest, TheHistoryShowsFiftyEventsUntilAllAreAskedFor) {
  test::EmbeddedHost host;
  for (int i = 1; i <= 60; ++i) {
    host.Run(
        u"INSERT INTO Marketing_Campaigns_History (Record_Date, Campaign_Name, Event, UserID) "
        "VALUES ('2026-03-04 10:20:30', 'Spring', 'Event %1', 'ANN')"_qs.arg(i));
  }
  const auto recent = LoadCampaignHistory(host.statements, false);
  ASSERT_TRUE(recent && recent->size() == 50);
  EXPECT_EQ(recent->front().Event, u"Event 11"_qs);
  const CampaignHistoryRow& last = recent->back();
  EXPECT_EQ(QStringList({MinuteText(last.Record_Date), last.Campaign_Name, last.Event, last.UserID}).join(u'|'),
            u"04/03/2026 10:20|Spring|Event 60|ANN"_qs);
  const auto all = LoadCampaignHistory(host.statements, true);
  ASSERT_TRUE(all);
  EXPECT_EQ(all->size(), 60u);
}

TEST(CampaignListTest, AFailureIsReportedAndIsNotAnEmptyList) {
  test::EmbeddedHost host;
  EXPECT_TRUE(LoadCampaigns(host.statements)->empty());
  host.Run(u"DROP TABLE Marketing_Campaigns_History; DROP TABLE Marketing_Campaigns"_qs);
  EXPECT_FALSE(LoadCampaigns(host.statements));
  EXPECT_FALSE(LoadCampaignHistory(host.statements, true));
  EXPECT_EQ(host.ui.Messages().size(), 2u);
}

TEST(CampaignListTest, Names) {
  EXPECT_FALSE(CampaignNameIsValid(u""_qs));
  EXPECT_FALSE(CampaignNameIsValid(u"   "_qs));
  EXPECT_TRUE(CampaignNameIsValid(u" a "_qs));

  const QString forty(40, u'n');
  EXPECT_EQ(CampaignCopyName(forty + u"41"_qs), forty);
  EXPECT_EQ(CampaignCopyName(u"   "_qs), u"   "_qs);
  EXPECT_EQ(CampaignCopyName(QString(39, u'n') + u"\U0001F697"_qs), QString(39, u'n'));
}

}  // namespace
}  // namespace qbx
