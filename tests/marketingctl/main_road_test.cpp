// A campaign from the query to the last message, through the program alone.

#include <gtest/gtest.h>

#include "garage.h"

namespace qbx::test {

TEST(MarketingCtl, SendsEveryRowOnceAndMarksIt) {
  const SandboxProcess sandbox;
  const Garage garage;
  garage.MakeEverybodyReachable();
  garage.Use(sandbox);
  const QString id = garage.MakeCampaign();

  const QJsonArray rows = garage.Rows("results %1", {id});
  const int count = static_cast<int>(rows.size());
  EXPECT_EQ(count, 60);
  const QJsonArray previews = garage.Rows("preview %1 --rows 1000", {id});
  EXPECT_EQ(previews.size(), count);
  const int credits = Number(garage.Done("credits"), "credits");

  const QJsonValue dry = garage.Done("send %1 --dry-run", {id});
  EXPECT_TRUE(Flag(dry, "dry_run") && At(dry, "nothing").isNull());
  for (const char* all : {"sms_sent", "email_sent", "left"})
    EXPECT_EQ(Number(dry, all), count) << all;
  EXPECT_EQ(Recorded(sandbox), 0) << "a dry run sent something";

  const QJsonValue sent = garage.Done("send %1 --yes", {id});
  for (const char* all : {"sms_sent", "email_sent", "processed"})
    EXPECT_EQ(Number(sent, all), count) << all;
  for (const char* none : {"sms_failed", "email_failed", "left", "in_doubt"})
    EXPECT_EQ(Number(sent, none), 0) << none;

  // The messages arrive in the order of the preview, with its words.
  const QJsonArray texts = QJsonDocument::fromJson(sandbox.Ask("/api/texts")).array();
  const QJsonArray mails = QJsonDocument::fromJson(sandbox.Ask("/api/mails")).array();
  ASSERT_EQ(texts.size(), count);
  ASSERT_EQ(mails.size(), count);
  std::map<int, QJsonValue> byRecord;
  for (const auto& row : rows)
    byRecord.emplace(Number(row, "RecordID"), row);
  for (int i = 0; i < count; ++i) {
    const QJsonValue& row = byRecord[Number(previews[i], "RecordID")];
    EXPECT_EQ(Text(texts[i], "to"), Text(row, "Mobile"));
    EXPECT_EQ(Text(texts[i], "message"), Text(previews[i], "sms"));
    EXPECT_EQ(At(mails[i], "to")[0].toString(), Text(row, "Email"));
    EXPECT_EQ(Text(mails[i], "subject"), Text(previews[i], "subject"));
  }
  EXPECT_EQ(Number(garage.Done("credits"), "credits"), credits - count);
  for (const auto& row : garage.Rows("results %1", {id}))
    EXPECT_TRUE(Flag(row, "Processed"));
  EXPECT_EQ(At(garage.Done("log --campaign %1", {id}), "results"), At(sent, "log"));

  // A second send finds nothing left, and leaves the log of the run that sent something.
  const QJsonValue again = garage.Done("send %1 --yes", {id});
  EXPECT_EQ(Number(again, "sms_sent") + Number(again, "email_sent"), 0);
  EXPECT_EQ(Text(again, "nothing"), "all_processed");
  EXPECT_FALSE(Flag(again, "dry_run"));
  EXPECT_EQ(Recorded(sandbox), 2 * count);
  EXPECT_EQ(At(garage.Done("log --campaign %1", {id}), "results"), At(sent, "log"));
}

TEST(MarketingCtl, ATemporaryQueryLeavesNoRowsBehind) {
  const Garage garage;
  const QJsonValue top = garage.Done("query --query %1 --records 10", {"Top Customers"});
  EXPECT_EQ(Number(top, "step1"), 10);
  const int id = Number(top, "campaign");
  EXPECT_LT(id, 0);
  EXPECT_EQ(garage.Rows("results %1", {QString::number(id)}).size(), 0);
}

TEST(MarketingCtl, DatesOfACallHoldForThatCall) {
  const Garage garage;
  const auto found = [&](const char* line) { return Number(garage.Done(line, {"Recent Customers"}), "step1"); };
  // Dates from before 1996, which a saved campaign does not keep, count as well.
  EXPECT_GT(found("query --query %1 --from 1992-01-01 --to today"), found("query --query %1 --from -2w --to today"));
  garage.Done("campaigns set 2 --from month-start-1m --to month-end-1m");
  const QJsonValue stored = garage.Done("campaigns show 2");
  EXPECT_EQ(At(stored, "Date2").toString(),
            QDate(QDate::currentDate().year(), QDate::currentDate().month(), 1).addDays(-1).toString(Qt::ISODate));
  EXPECT_TRUE(garage.Run("query 2").err.contains("dates are over"));
  EXPECT_FALSE(garage.Run("query 2 --from month-start+1m --to month-end+1m").err.contains("dates are over"));
  EXPECT_EQ(At(garage.Done("campaigns show 2"), "Date2"), At(stored, "Date2"));
  // Rows tell of their own dates, whatever the campaign says.
  garage.Sql("UPDATE [Campaign Results] SET Recall_Date = '2020-05-31', Send_SMS = 1");
  EXPECT_TRUE(garage.Run("send 2 --dry-run").err.contains("due on 31/05/2020"));
}

TEST(MarketingCtl, CampaignsAreMadeChangedCopiedAndDeleted) {
  const Garage garage;
  const QString text = QString::fromUtf8("O'Neil; \"50%\" \u20ac20 --now");
  const QString id = QString::number(
      Number(garage.Done("campaigns new %1 --query %2 --sms @-", {text, "Reminder Date"}, text.toUtf8()), "ID"));
  garage.Done(
      "campaigns set %1 --reminder 6 --year between:2010,2015 --mileage less:90000 --cust-type is-not:Trade --from "
      "2026-01-01 "
      "--to 2026-06-30 --no-marketing on",
      {id});
  const QString copy = QString::number(Number(garage.Done("campaigns copy %1 Second", {id}), "ID"));
  EXPECT_NE(copy, id);
  // A name does for a number as long as one campaign has it; renaming to the own name changes nothing.
  EXPECT_EQ(Number(garage.Done("campaigns rename second Second"), "ID"), copy.toInt());
  const QString longName = QString("Second ").repeated(9);
  const CtlResult cut = garage.Run("campaigns copy second %1", {longName});
  EXPECT_TRUE(cut.err.contains("cut to \"" + longName.left(40).toUtf8())) << cut.err.constData();
  const QString twin = QString::number(Number(garage.Done("campaigns new SECOND --allow-same-name"), "ID"));
  EXPECT_EQ(garage.Run("campaigns show second").Error(), "ambiguous_name");
  garage.Done("campaigns delete %1", {twin});
  garage.Done("campaigns delete %1", {id});
  EXPECT_EQ(garage.Run("campaigns show %1", {id}).code, 1);

  const QJsonValue shown = garage.Done("campaigns show %1", {copy});
  const QList<QPair<const char*, QJsonValue>> expected = {
      {"SMS", text},
      {"CampaignTypeID", 10},
      {"ReminderID", 5},
      {"WhenYearOfManufacture", 3},
      {"ValueYearOfManufacture1", "2010"},
      {"ValueYearOfManufacture2", "2015"},
      {"ValueLastKnownMileage1", "90000"},
      {"ValueCustType", "Trade"},
      {"UseEnquirySource", false},
      {"Date1", "2026-01-01"},
      {"selects",
       "Customers' vehicles whose date of \"Recall 6: Warranty\" lies from 01/01/2026 to 30/06/2026, both days included."},
      {"Marketing", true}};
  for (const auto& [field, value] : expected)
    EXPECT_TRUE(At(shown, field) == value) << field;
}

TEST(MarketingCtl, OneRowChangesWhenAskedTo) {
  const Garage garage;
  garage.MakeEverybodyReachable();
  const QString id = garage.MakeCampaign();
  const auto first = [&]() -> QJsonValue { return garage.Rows("results %1", {id})[0]; };
  const QString record = QString::number(Number(first(), "RecordID"));
  EXPECT_EQ(garage.Run("results %1 --toggle %2 Send_SMS", {id, record}).code, 0);
  EXPECT_FALSE(Flag(first(), "Send_SMS"));
  EXPECT_EQ(Number(garage.Done("results %1 --tick Send_SMS --rows %2", {id, record + ",987654"}), "changed"), 1);
  EXPECT_TRUE(Flag(first(), "Send_SMS"));
  EXPECT_EQ(garage.Run("results %1 --toggle %2 Processed", {id, record}).code, 1);
  EXPECT_FALSE(Flag(first(), "Processed"));
  EXPECT_EQ(garage.Run("results %1 --toggle %2 Processed --yes", {id, record}).code, 0);
  EXPECT_TRUE(Flag(first(), "Processed"));
  // Rows with a mark are not thrown away unasked.
  EXPECT_EQ(garage.Run("query %1", {id}).code, 1);
  EXPECT_TRUE(Flag(first(), "Processed"));
  EXPECT_EQ(garage.Run("query %1 --reset-processed", {id}).code, 0);
  EXPECT_FALSE(Flag(first(), "Processed"));
  const QString renewed = QString::number(Number(first(), "RecordID"));
  EXPECT_EQ(garage.Run("results %1 --take-out %2 --yes", {id, renewed}).code, 0);
  EXPECT_NE(QString::number(Number(first(), "RecordID")), renewed);
}

}  // namespace qbx::test
