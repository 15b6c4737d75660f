#include "campaigns/campaign_storage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

#include "campaigns/store_campaign.h"
#include "campaigns/stored_fields.h"
#include "support/embedded_host.h"

namespace qbx {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

/// Every field with a value of its own, as awkward as its type allows.
CampaignRecord FullRecord() {
  CampaignRecord record;
  int number = std::numeric_limits<int>::min();
  for (const StoredField& field : StoredFields()) {
    const auto set = [&](auto member) {
      auto& value = record.*member;
      using Type = std::remove_reference_t<decltype(value)>;
      ++number;
      if constexpr (std::is_same_v<Type, int>) value = number;
      if constexpr (std::is_same_v<Type, bool>) value = number % 2 == 0;
      if constexpr (std::is_same_v<Type, QDateTime>)
        value = QDateTime(QDate(2024, 2, 29), QTime(23, 59, 59), Qt::UTC).addYears(number % 9);
      if constexpr (std::is_same_v<Type, QString>)
        value = QString("O'Brien \"50%\"\r\n\u20AC \U0001F697 {contact}; -- ") + field.name;
    };
    std::visit(set, field.member);
  }
  record.Letter += QString(100'000, u'L');
  return record;
}

class CampaignStorageTest : public testing::Test {
 protected:
  QStringList History() {
    return host.Rows("SELECT Campaign_Name, Event, UserID FROM Marketing_Campaigns_History ORDER BY ID");
  }
  QStringList ErrorEvents() { return host.Rows("SELECT Details FROM _Log WHERE EventType = 6"); }

  test::EmbeddedHost host;
  CurrentCampaign current;
  CampaignStorage storage{host.statements, host.events, host.context, host.diagnostics, current};
};

TEST_F(CampaignStorageTest, ANewCampaignHasItsDefaultsAndATemporaryNumber) {
  host.clock.Set(QDate(2024, 2, 29), QTime(15, 45));
  current.record = FullRecord();
  current.CampaignChanged = true;
  storage.InitialiseCampaign();

  CampaignRecord expected;
  expected.ID = -1;
  expected.Date1 = QDateTime(QDate(2023, 2, 28), QTime(0, 0));
  expected.Date2 = QDateTime(QDate(2024, 2, 29), QTime(15, 45));
  EXPECT_EQ(current.record, expected);
  EXPECT_EQ(host.context.campaignId, -1);
  EXPECT_TRUE(current.CampaignChanged);

  storage.InitialiseCampaign();
  EXPECT_EQ(current.record.ID, -2);
}

TEST_F(CampaignStorageTest, EveryFieldComesBackAsItWasSavedAndUpdated) {
  current.record = FullRecord();
  current.CampaignChanged = true;
  ASSERT_TRUE(storage.SaveCampaign());
  EXPECT_FALSE(current.CampaignChanged);
  const CampaignRecord saved = current.record;
  ASSERT_GT(saved.ID, 0);
  EXPECT_EQ(host.context.campaignId, saved.ID);

  storage.InitialiseCampaign();
  ASSERT_TRUE(storage.LoadCampaign(saved.ID));
  EXPECT_EQ(current.record, saved);
  EXPECT_EQ(host.context.campaignId, saved.ID);
  EXPECT_FALSE(host.ui.Busy());

  current.record = CampaignRecord{};
  current.record.ID = saved.ID;
  current.record.Date2 = QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5), Qt::UTC);
  const CampaignRecord updated = current.record;
  current.CampaignChanged = true;
  ASSERT_TRUE(storage.UpdateCampaign());
  EXPECT_FALSE(current.CampaignChanged);
  current.record = FullRecord();
  ASSERT_TRUE(storage.LoadCampaign(saved.ID));
  EXPECT_EQ(current.record, updated);
  EXPECT_THAT(host.Rows("SELECT TableKey, Details, Username FROM _Log WHERE EventType = 9"),
              Contains(QString("MARKETING|Load Campaign: %1|TESTER").arg(saved.ID)));
  EXPECT_TRUE(host.ui.Messages().empty());
}

TEST_F(CampaignStorageTest, DetailsCopiesAndDeletionsLeaveTheCurrentRecordAlone) {
  current.record.Campaign_Name = "First";
  current.record.SMS = "Hello";
  ASSERT_TRUE(storage.SaveCampaign());
  const CampaignRecord before = current.record;

  EXPECT_TRUE(storage.UpdateCampaignDetails(before.ID, "Renamed", "What for"));
  EXPECT_GT(storage.CopyCampaign(before.ID, "Copy"), before.ID);
  EXPECT_TRUE(storage.DeleteCampaign(before.ID));
  EXPECT_EQ(current.record, before);
  EXPECT_THAT(host.Rows("SELECT Campaign_Name, Campaign_Description, SMS, Created_By FROM Marketing_Campaigns"),
              ElementsAre("Copy|What for|Hello|TESTER"));
  EXPECT_EQ(History().size(), 4);
  for (const QString& line : History())
    EXPECT_TRUE(line.endsWith("|TESTER")) << line.toStdString();
}

TEST_F(CampaignStorageTest, WhatIsNullOrOutOfRangeInTheDatabaseIsReadAsSomethingHarmless) {
  host.Run("INSERT INTO Marketing_Campaigns (ID) VALUES (5)");
  current.record = FullRecord();
  ASSERT_TRUE(storage.LoadCampaign(5));
  CampaignRecord empty;
  empty.ID = 5;
  empty.Version = empty.CampaignTypeID = empty.Records = empty.RecordsStart = empty.ReminderID = 0;
  empty.WhenCustType = empty.WhenEnquirySource = empty.WhenLastKnownMileage = empty.WhenYearOfManufacture = 0;
  EXPECT_EQ(current.record, empty);
  EXPECT_FALSE(current.record.Date1.isValid());
  EXPECT_TRUE(storage.UpdateCampaign());
  EXPECT_TRUE(host.Ask("SELECT Date1 FROM Marketing_Campaigns WHERE ID = 5").IsNull());

  host.Run(
      "INSERT INTO Marketing_Campaigns (ID, Records, RecordsStart, ReminderID, Step1, Date1, Campaign_Name) "
      "VALUES (6, 99999999999, -99999999999, 'x', 7, 'no date', 12)");
  ASSERT_TRUE(storage.LoadCampaign(6));
  EXPECT_EQ(current.record.Records, std::numeric_limits<int>::max());
  EXPECT_EQ(current.record.RecordsStart, std::numeric_limits<int>::min());
  EXPECT_EQ(current.record.ReminderID, 0);
  EXPECT_TRUE(current.record.Step1);
  EXPECT_FALSE(current.record.Date1.isValid());
  EXPECT_EQ(current.record.Campaign_Name, "12");
}

TEST_F(CampaignStorageTest, AFailureIsReportedUnderTheRoutinesNameAndKeepsWhatWasThere) {
  current.record = FullRecord();
  current.record.ID = -3;
  current.CampaignChanged = true;
  const CampaignRecord before = current.record;
  host.Run("DROP TABLE Marketing_Campaigns_History");

  EXPECT_FALSE(storage.SaveCampaign());
  EXPECT_FALSE(storage.UpdateCampaign());
  EXPECT_FALSE(storage.UpdateCampaignDetails(1, "a", "b"));
  EXPECT_EQ(storage.CopyCampaign(1, "a"), 0);
  EXPECT_FALSE(storage.DeleteCampaign(1));
  host.Run("DROP TABLE Marketing_Campaigns");
  EXPECT_FALSE(storage.LoadCampaign(1));

  EXPECT_EQ(current.record, before);
  EXPECT_TRUE(current.CampaignChanged);
  EXPECT_EQ(host.ui.Messages().size(), 6u);
  EXPECT_THAT(host.ui.MessageTexts()[0].toStdString(), HasSubstr("An unexpected error occured."));
  const std::string log = host.folder.Read("MARKETING.LOG").toStdString();
  for (const char* routine :
       {"SaveCampaign", "UpdateCampaign", "UpdateCampaignDetails", "CopyCampaign", "DeleteCampaign", "LoadCampaign"}) {
    EXPECT_THAT(log, HasSubstr(std::string(" (in ") + routine + ")"));
  }
  EXPECT_EQ(ErrorEvents().size(), 6);
}

TEST_F(CampaignStorageTest, AFailingDatabaseIsNotTakenForADeletedCampaign) {
  const auto store = [this](const QString& name) {
    return StoreCampaign(host.statements, storage, current, host.ui, name, "About");
  };
  storage.InitialiseCampaign();
  ASSERT_TRUE(store("Mine"));
  host.Run("DROP TABLE Marketing_Campaigns");
  EXPECT_FALSE(store("Typed"));
  EXPECT_EQ(host.ui.Messages().size(), 1u) << "the failure alone, no question";
  EXPECT_EQ(current.record.Campaign_Name, "Typed") << "what was typed is kept";
  EXPECT_TRUE(current.CampaignChanged) << "and asked about before it is lost";
}

}  // namespace
}  // namespace qbx
