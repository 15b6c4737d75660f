#include "database/event_log.h"

#include "database/database_fixture.h"

namespace qbx {
namespace {

class EventLogTest : public test::DatabaseFixture {};

TEST_F(EventLogTest, CutsKeyAndDetails) {
  Open();
  events_.LogEvent(kEventSms, 3, QString(30, u'k'), QString(100, u'd'));
  EXPECT_EQ(server_.calls.last(),
            QLatin1String("call proc_addp__Log @Username=Jo Brown @EventType=7 @TableID=3 @TableKey=") +
                QString(25, u'k') + QLatin1String(" @Details=") + QString(80, u'd'));
}

TEST_F(EventLogTest, AnOlderDatabaseGetsALineOfTheLogFile) {
  Open();
  context_.DatabaseVersion = 61;
  events_.LogEvent(kEventError, 0, QStringLiteral("DB"), QStringLiteral("not written"));
  EXPECT_EQ(LogLines(), QStringList{QStringLiteral("Event - Type:6, Table:0, Key:DB")});
  EXPECT_EQ(server_.calls.size(), 1);
  context_.DatabaseVersion = 62;
  events_.LogEvent(kEventError, 0, QStringLiteral("DB"), {});
  EXPECT_EQ(server_.Count(QStringLiteral("proc_addp__Log")), 1);
}

TEST_F(EventLogTest, TiesAMarketingEventToTheCampaign) {
  Open();
  server_.parameters = {{},
                        {.name = QStringLiteral("@UserID")},
                        {.name = QStringLiteral("@Event")},
                        {.name = QStringLiteral("@CampaignID")}};
  events_.LogMarketingEvent(QStringLiteral("Print Letters"));
  EXPECT_EQ(server_.calls.last(),
            QLatin1String("call proc_addp__Marketing_Log @UserID=Jo Brown @Event=Print Letters @CampaignID=-7"));
}

TEST_F(EventLogTest, AFailedEventIsDropped) {
  events_.LogEvent(kEventError, 0, QStringLiteral("DB"), {});
  Open();
  server_.Expect(QStringLiteral("proc_addp__Log"), test::Failure(QStringLiteral("full")));
  events_.LogEvent(kEventError, 0, QStringLiteral("DB"), {});
  server_.describeError = test::Lost().error;
  events_.LogEvent(kEventError, 0, QStringLiteral("DB"), {});
  events_.LogMarketingEvent(QStringLiteral("Print Letters"));
  EXPECT_TRUE(ui_.Messages().empty());
  EXPECT_TRUE(LogLines().isEmpty());
  EXPECT_EQ(server_.Count(QStringLiteral("open ")), 1);
}

}  // namespace
}  // namespace qbx
