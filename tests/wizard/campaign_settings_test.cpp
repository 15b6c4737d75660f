// Campaign settings between the wizard and the record, and the rows of a campaign when saving or quitting fails.

#include "wizard/campaign_settings.h"

#include <gmock/gmock.h>

#include "wizard/step_checks.h"
#include "wizard/wizard_fixture.h"

namespace qbx {
namespace {

using test::Wizard;
using testing::ElementsAre;

CampaignRecord FullRecord() {
  CampaignRecord record;
  record.CampaignTypeID = kTopCustomers;
  record.Step1 = record.Step3 = true;
  record.ID = 12;
  record.Campaign_Name = "Spring";
  record.Letter = "{\\rtf1 Hello}";
  record.Email_Subject = "Subject";
  record.Email_Body = "Body";
  record.SMS = "Text";
  record.Makes = "Audi, Ford";
  record.Date1 = QDateTime(QDate(2025, 3, 4), QTime(9, 30));
  record.Date2 = QDateTime(QDate(2026, 3, 4), QTime(10, 20));
  record.Records = 25;
  record.RecordsStart = 5;
  record.ReminderID = 5;
  record.UseCustType = record.UseYearOfManufacture = true;
  record.WhenCustType = 1;
  record.WhenYearOfManufacture = 3;
  record.ValueCustType = "Trade";
  record.ValueEnquirySource = "Web";
  record.ValueLastKnownMileage1 = "1000";
  record.ValueLastKnownMileage2 = "2000";
  record.ValueYearOfManufacture1 = "2010";
  record.ValueYearOfManufacture2 = "2015";
  return record;
}

TEST(CampaignSettings, ARecordComesBackAsItWas) {
  WizardState state;
  EXPECT_TRUE(CopyFromRecord(FullRecord(), state).empty());
  EXPECT_THAT(state.bStepComplete, ElementsAre(true, true, false, true));
  EXPECT_TRUE(state.filters.chkFilter[kFilterYear]);
  CampaignRecord copy;
  copy.ID = 12;
  copy.Campaign_Name = "Spring";
  copy.CampaignTypeID = kTopCustomers;
  copy.Date1 = FullRecord().Date1;
  copy.Date2 = FullRecord().Date2;
  CopyToRecord(state, copy);
  EXPECT_EQ(copy, FullRecord());
}

TEST(CampaignSettings, ReadsTextsThatAreNoNumberOrDate) {
  WizardState state;
  state.options.dteDate = {QDate(), QDate(2026, 1, 2)};
  state.options.txtCriteria = "12.5 rows";
  state.options.txtCriteriaStart = "99999999999";
  CampaignRecord record = FullRecord();
  CopyToRecord(state, record);
  EXPECT_EQ(record.Date1, FullRecord().Date1);
  EXPECT_EQ(record.Date2, QDate(2026, 1, 2).startOfDay());
  EXPECT_EQ(record.Records, 12);
  EXPECT_EQ(record.RecordsStart, 2147483647);
}

TEST(CampaignSettings, WhatIsNotStoredIsNotInherited) {
  WizardState state;
  state.options.dteDate = {QDate(2024, 5, 6), QDate(2024, 5, 7)};
  state.options.cmbType = "Other";
  state.options.FromDateText = state.options.ToDateText = "2024-05-06";
  state.options.cmbReminder = 2;
  state.filters.chkIncludeOptedOut = true;
  state.filters.chkFilter[kFilterModel] = true;
  state.filters.txtModel = "A4";
  CampaignRecord record = FullRecord();
  record.Date1 = QDateTime(QDate(1995, 12, 31), QTime(0, 0));
  record.Date2 = QDateTime();
  record.ReminderID = 6;
  record.WhenCustType = 2;
  EXPECT_THAT(CopyFromRecord(record, state), ElementsAre(1));
  EXPECT_EQ(state.options.dteDate[0], QDate(2024, 5, 6));
  EXPECT_EQ(state.options.dteDate[1], QDate(2024, 5, 7));
  EXPECT_EQ(state.options.cmbType + state.options.FromDateText + state.options.ToDateText + state.filters.txtModel, "");
  EXPECT_FALSE(state.filters.chkIncludeOptedOut || state.filters.chkFilter[kFilterModel]);
  EXPECT_EQ(state.options.cmbReminder, -1);
  EXPECT_EQ(state.filters.cmbFilter[1], -1);
}

TEST_F(Wizard, RowsThatCannotFollowTheirCampaignAreTriedAgain) {
  SelectEverybody();
  ASSERT_TRUE(steps_.NextStep(1).Moved());
  const int temporary = campaign_.record.ID;
  host_.Run(
      "CREATE TRIGGER Refuse BEFORE UPDATE OF CampaignID ON [Campaign Results] BEGIN SELECT RAISE(ABORT, 'not now'); "
      "END");
  EXPECT_FALSE(settings_.SaveCampaignSettings([this] { storage_.SaveCampaign(); }));
  const int saved = campaign_.record.ID;
  EXPECT_GT(saved, 0);
  EXPECT_TRUE(campaign_.CampaignChanged);
  EXPECT_EQ(results_.CampaignId(), temporary);
  EXPECT_FALSE(steps_.NextStep(0).Moved());
  EXPECT_EQ(Rows(temporary).size(), 2);

  host_.Run("DROP TRIGGER Refuse");
  steps_.TabOpened(kResultsTab);
  EXPECT_EQ(Rows(temporary).size(), 0);
  EXPECT_EQ(Rows(saved).size(), 2);
  EXPECT_EQ(results_.CampaignId(), saved);
  EXPECT_EQ(results_.CountText(), "2 records ");
}

TEST_F(Wizard, QuittingRemovesTheRowsOfAnUnsavedCampaignWithoutAWord) {
  SelectEverybody();
  const int id = campaign_.record.ID;
  host_.Run("CREATE TRIGGER Refuse BEFORE DELETE ON [Campaign Results] BEGIN SELECT RAISE(ABORT, 'still in use'); END");
  settings_.Quit();
  EXPECT_EQ(Rows(id).size(), 2);
  host_.Run("DROP TRIGGER Refuse");
  host_.engine.BreakSessions();
  settings_.Quit();
  EXPECT_EQ(Rows(id).size(), 0);
  EXPECT_TRUE(host_.ui.Messages().empty());
}

TEST_F(Wizard, ACampaignTypeThatTheTreeDoesNotHaveSelectsNothing) {
  steps_.StartNewCampaign();
  for (const int type : {0, 11, 99}) {
    campaign_.record.CampaignTypeID = type;
    settings_.SetupCampaignData();
    EXPECT_EQ(state_.selectedNode, kNoQuery);
    EXPECT_FALSE(state_.panels.cmdNextEnabled);
  }
  EXPECT_TRUE(host_.ui.Messages().empty());
}

}  // namespace
}  // namespace qbx
