#include "database/event_log.h"

#include "database/database_fixture.h"

namespace qbx {
namespace {

class EventLogTest : public test::DatabaseFixture {};

TEST_F(EventLogTest, CutsKeyAndDetails) {
  Open();
  events_.LogEvent(kEventSms, 3, QString(30, u'k'), QString(100, u'd'));
  EXPECT_EQ(server_.calls.last(), QString("call proc_addp__Log @Username=Jo Brown @EventType=7 @TableID=3 @TableKey=") +
                                      QString(25, u'k') + QString(" @Details=") + QString(80, u'd'));
}

TEST_F(EventLogTest, AnOlderDatabaseGetsALineOfTheLogFile) {
  Open();
  context_.DatabaseVersion = 61;
  events_.LogEvent(kEventError, 0, "DB", "not written");
  EXPECT_EQ(LogLines(), QStringList{"Event - Type:6, Table:0, Key:DB"});
  EXPECT_EQ(server_.calls.size(), 1);
  context_.DatabaseVersion = 62;
  events_.LogEvent(kEventError, 0, "DB", {});
  EXPECT_EQ(server_.Count("proc_addp__Log"), 1);
}

TEST_F(EventLogTest, TiesAMarketingEventToTheCampaign) {
  Open();
  server_.parameters = {{}, {.name = "@UserID"}, {.name = "@Event"}, {.name = "@CampaignID"}};
  events_.LogMarketingEvent("Print Letters");
  EXPECT_EQ(server_.calls.last(), "call proc_addp__Marketing_Log @UserID=Jo Brown @Event=Print Letters @CampaignID=-7");
}

TEST_F(EventLogTest, AnErrorInATransactionIsWrittenWhenARollbackCannotUndoIt) {
  Open();
  {
    const Transaction outer(connection_);
    Transaction inner(connection_);
    events_.LogEvent(kEventError, 0, "DB", "why it is rolled back");
    inner.Commit();
    EXPECT_EQ(server_.Count("proc_addp__Log"), 0);
  }
  EXPECT_EQ(server_.Count("@Details=why it is rolled back"), 1);
}

TEST_F(EventLogTest, AFailedEventIsDropped) {
  events_.LogEvent(kEventError, 0, "DB", {});
  Open();
  server_.Expect("proc_addp__Log", test::Failure("full"));
  events_.LogEvent(kEventError, 0, "DB", {});
  server_.describeError = test::Lost().error;
  events_.LogEvent(kEventError, 0, "DB", {});
  events_.LogMarketingEvent("Print Letters");
  EXPECT_TRUE(ui.Messages().empty());
  EXPECT_TRUE(LogLines().isEmpty());
  EXPECT_EQ(server_.Count("open "), 1);
}

}  // namespace
}  // namespace qbx
