// Campaign settings between the wizard and the record, and the commands of the wizard, against a host database.

#include "wizard/campaign_settings.h"

#include <gmock/gmock.h>

#include "queries/query_catalogue.h"
#include "support/embedded_host.h"
#include "wizard/steps.h"

namespace qbx {
namespace {

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
  state.cmbReminderItems = ReminderList({});
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

TEST(CampaignSettings, NumbersAndDatesThatAreNone) {
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

class Wizard : public testing::Test {
 protected:
  Wizard() {
    host_.Run("INSERT INTO Customers (Customer, Lastname) VALUES (1, 'One'), (2, 'Two')");
    host_.Run("INSERT INTO Customer_Types VALUES (1, 'Retail'), (2, 'Trade')");
    host_.Run("INSERT INTO Makes VALUES (1, 'Audi', 0), (2, 'Ford', 0), (3, 'Volvo Penta', 5)");
    options_.MOT_Reminder_Name = "MOT";
  }

  [[nodiscard]] QStringList Rows(int campaign) {
    return host_.Rows(
        QString("SELECT Customer FROM [Campaign Results] WHERE CampaignID = %1 ORDER BY 1").arg(campaign));
  }
  QStringList Events() { return host_.Rows("SELECT Details FROM _Log WHERE EventType = 9 ORDER BY LogID"); }

  test::EmbeddedHost host_;
  Options options_;
  EditionFlags edition_;
  QString user_ = "TESTER";
  CurrentCampaign campaign_;
  WizardState state_;
  CampaignStorage storage_{host_.statements, host_.events, host_.context, host_.diagnostics, campaign_};
  Counters counters_{host_.statements, host_.diagnostics};
  ResultsView results_{host_.statements, counters_, host_.diagnostics};
  QueryProcessor queries_{host_.statements,  options_,         user_, campaign_, state_.options, state_.filters,
                          state_.lblRecords, host_.diagnostics};
  QuerySelection selection_{host_.statements, campaign_, state_, options_, edition_, host_.diagnostics};
  CampaignSettings settings_{host_.statements, campaign_, state_, selection_, results_, options_, host_.diagnostics};
  int optionLoads_ = 0;
  WizardSteps steps_{{.campaign = campaign_,
                      .state = state_,
                      .storage = storage_,
                      .settings = settings_,
                      .queries = queries_,
                      .results = results_,
                      .counters = counters_,
                      .events = host_.events,
                      .options = options_,
                      .edition = edition_,
                      .loadOptions = [this] { ++optionLoads_; }},
                     host_.diagnostics};
};

TEST_F(Wizard, ANewCampaignGoesThroughTheSteps) {
  steps_.StartNewCampaign();
  EXPECT_LT(campaign_.record.ID, 0);
  EXPECT_FALSE(campaign_.CampaignChanged);
  EXPECT_FALSE(state_.options.dteDate[0].isValid());
  EXPECT_EQ(state_.selectedNode, kCustomerGroup);
  EXPECT_EQ(state_.cmbData1Items.size(), 2U);
  EXPECT_EQ(state_.cmbReminderItems[0], "MOT Reminder");

  EXPECT_FALSE(steps_.NextStep(0).Moved());
  EXPECT_FALSE(steps_.NextStep(1).Moved());
  EXPECT_FALSE(steps_.RunCampaign().Moved());
  EXPECT_EQ(
      host_.ui.MessageTexts(),
      QStringList({"Invalid Campaign Type Selected.",
                   "Please go to Step 1 and click Next to complete that step before continuing onto another step.",
                   "Step 1 has not been completed. Please go to tab 1. Query / Report Starting Point and click "
                   "'Next >'."}));

  selection_.NodeClick(kAllCustomers);
  EXPECT_TRUE(campaign_.CampaignChanged);
  EXPECT_EQ(steps_.NextStep(0).selectTab, 2);
  state_.filters.chkIncludeOptedOut = true;
  const StepResult second = steps_.NextStep(1);
  EXPECT_EQ(second.selectTab, 3);
  EXPECT_TRUE(second.notice);
  EXPECT_EQ(results_.CountText(), "2 records ");
  EXPECT_EQ(steps_.NextStep(2).selectTab, 4);
  EXPECT_EQ(steps_.RunCampaign().selectTab, 5);
  EXPECT_EQ(optionLoads_, 2);
  EXPECT_EQ(steps_.BackStep(1).selectTab, 1);
  EXPECT_FALSE(steps_.BackStep(0).Moved());
  EXPECT_EQ(Events(), QStringList({"Clicked: Next(0)", "Clicked: Next(1)", "Clicked: Next(0)", "Clicked: Next(1)",
                                   "Clicked: Next(2)", "Clicked: Back(1)"}));
}

TEST_F(Wizard, SentRowsAreResetOnlyAfterAYes) {
  steps_.StartNewCampaign();
  selection_.NodeClick(kAllCustomers);
  ASSERT_TRUE(steps_.NextStep(0).Moved());
  host_.Run("UPDATE [Campaign Results] SET Send_SMS = 1, Processed = 1 WHERE Customer = 1");
  steps_.TabOpened(5);
  const QString sent = "SELECT COUNT(*) FROM [Campaign Results] WHERE Processed = 1";
  host_.ui.Answer("Do you want to reload the results and reset the Processed Status?", MessageAnswer::kNo);
  EXPECT_FALSE(steps_.NextStep(1).Moved());
  EXPECT_EQ(host_.Ask(sent).ToInt(), 1);
  EXPECT_EQ(host_.ui.Messages().back().question, Question::kResetProcessedResults);
  host_.ui.Answer("Do you want to reload the results and reset the Processed Status?", MessageAnswer::kYes);
  EXPECT_TRUE(steps_.NextStep(1).Moved());
  EXPECT_EQ(host_.Ask(sent).ToInt(), 0);
}

TEST_F(Wizard, AFailedQueryCompletesNoStep) {
  steps_.StartNewCampaign();
  selection_.NodeClick(kAllCustomers);
  host_.Run("DELETE FROM _Procedures WHERE Name = 'proc_Marketing_AddAllCustomers'");
  EXPECT_FALSE(steps_.NextStep(0).Moved());
  EXPECT_FALSE(state_.bStepComplete[1]);
}

TEST_F(Wizard, SavingGivesTheRowsTheirCampaign) {
  steps_.StartNewCampaign();
  selection_.NodeClick(kAllCustomers);
  ASSERT_TRUE(steps_.NextStep(0).Moved());
  const int temporary = campaign_.record.ID;
  EXPECT_FALSE(settings_.SaveCampaignSettings([] {}));
  EXPECT_EQ(Rows(temporary).size(), 2);

  state_.txtSMS = "It's due";
  EXPECT_TRUE(settings_.SaveCampaignSettings([this] {
    campaign_.record.Campaign_Name = "Mine";
    storage_.SaveCampaign();
  }));
  const int saved = campaign_.record.ID;
  EXPECT_GT(saved, 0);
  EXPECT_EQ(Rows(temporary).size(), 0);
  EXPECT_EQ(Rows(saved).size(), 2);
  EXPECT_EQ(state_.cmbCampaigns.size(), 1U);
  EXPECT_EQ(WindowCaption("Base", campaign_.record), "Base - [Mine]");

  steps_.StartNewCampaign();
  EXPECT_EQ(state_.txtSMS, "");
  EXPECT_FALSE(settings_.LoadCampaignSettings([] { return 0; }));
  EXPECT_TRUE(settings_.LoadCampaignSettings([&] { return storage_.LoadCampaign(saved) ? saved : 0; }));
  EXPECT_EQ(state_.txtSMS, "It's due");
  EXPECT_EQ(state_.selectedNode, kAllCustomers);
  EXPECT_EQ(results_.CountText(), "2 records ");
  EXPECT_TRUE(steps_.NextStep(1).Moved());
}

TEST_F(Wizard, ClosingRemovesTheRowsOfAnUnsavedCampaignOnlyWhenChangesAreGivenUp) {
  steps_.StartNewCampaign();
  selection_.NodeClick(kAllCustomers);
  ASSERT_TRUE(steps_.NextStep(0).Moved());
  const int id = campaign_.record.ID;
  host_.ui.Answer("have not been saved.\r\rExit QBX Marketing & Reporting Module and lose changes?",
                  MessageAnswer::kNo);
  EXPECT_FALSE(settings_.CloseRequest());
  EXPECT_EQ(host_.ui.Messages().back().defaultAnswer, MessageAnswer::kNo);
  EXPECT_EQ(Rows(id).size(), 2);
  campaign_.CampaignChanged = false;
  EXPECT_TRUE(settings_.CloseRequest());
  EXPECT_EQ(Rows(id).size(), 2);
  campaign_.CampaignChanged = true;
  host_.ui.Answer("lose changes?", MessageAnswer::kYes);
  EXPECT_TRUE(settings_.CloseRequest());
  EXPECT_EQ(Rows(id).size(), 0);
}

TEST_F(Wizard, MakesAreChosenFromTheHostsListAndTyped) {
  edition_.boat = true;
  steps_.StartNewCampaign();
  selection_.NodeClick(kSpecificMakes);
  ASSERT_EQ(state_.lstMakes.size(), 2U);
  state_.options.txtMakes = "Trabant";
  selection_.MakesClick({true, true});
  EXPECT_EQ(state_.options.txtMakes, "Audi, Ford, Trabant");
  selection_.NodeClick(kSpecificEngines);
  EXPECT_EQ(state_.options.txtMakes, "");
  ASSERT_EQ(state_.lstMakes.size(), 1U);
  EXPECT_FALSE(state_.filters.mileageVisible);
  selection_.NodeClick(kAllVehicles);
  EXPECT_TRUE(state_.filters.mileageVisible);
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
