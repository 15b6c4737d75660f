// A campaign from the query to the last message, through the program alone.

#include <gtest/gtest.h>

#include <QTextStream>
#include <set>

#include "garage.h"

namespace qbx::test {

namespace {

QString Text(const QJsonValue& row, const char* column) {
  return row[QLatin1String(column)].toString();
}

QStringList Words(const char* line) {
  return QString::fromUtf8(line).split(QLatin1Char(' '));
}

}  // namespace

TEST(MarketingCtl, SendsEveryRowOnceAndMarksIt) {
  const SandboxProcess sandbox;
  const Garage garage;
  garage.MakeEverybodyReachable();
  garage.Use(sandbox);
  const QString id = garage.MakeCampaign();

  const QJsonArray rows = garage.Done({QStringLiteral("results"), id}).Rows();
  const int count = static_cast<int>(rows.size());
  EXPECT_EQ(count, 60);
  const QJsonArray previews =
      garage.Done({QStringLiteral("preview"), id, QStringLiteral("--rows"), QStringLiteral("1000")}).Rows();
  EXPECT_EQ(previews.size(), count);
  const double credits = garage.Done(Words("credits")).Object()[QLatin1String("credits")].toDouble();

  const QJsonObject dry = garage.Done({QStringLiteral("send"), id, QStringLiteral("--dry-run")}).Object();
  EXPECT_EQ(dry[QLatin1String("sms_sent")].toInt(), count);
  EXPECT_EQ(dry[QLatin1String("email_sent")].toInt(), count);
  EXPECT_EQ(dry[QLatin1String("left")].toInt(), count);
  EXPECT_EQ(Recorded(sandbox), 0) << "a dry run sent something";

  const QJsonObject sent = garage.Done({QStringLiteral("send"), id, QStringLiteral("--yes")}).Object();
  EXPECT_EQ(sent[QLatin1String("sms_sent")].toInt(), count);
  EXPECT_EQ(sent[QLatin1String("email_sent")].toInt(), count);
  EXPECT_EQ(sent[QLatin1String("processed")].toInt(), count);
  for (const char* none : {"sms_failed", "email_failed", "left", "in_doubt"})
    EXPECT_EQ(sent[QLatin1String(none)].toInt(-1), 0) << none;

  // The messages arrive in the order of the preview, with its words.
  const QJsonArray texts = QJsonDocument::fromJson(sandbox.Ask(QStringLiteral("/api/texts"))).array();
  const QJsonArray mails = QJsonDocument::fromJson(sandbox.Ask(QStringLiteral("/api/mails"))).array();
  ASSERT_EQ(texts.size(), count);
  ASSERT_EQ(mails.size(), count);
  std::map<qint64, QJsonValue> byRecord;
  for (const QJsonValue& row : rows)
    byRecord.emplace(row[QLatin1String("RecordID")].toInt(), row);
  for (int i = 0; i < count; ++i) {
    const QJsonValue& row = byRecord[previews[i][QLatin1String("RecordID")].toInt()];
    EXPECT_EQ(Text(texts[i], "to"), Text(row, "Mobile"));
    EXPECT_EQ(Text(texts[i], "message"), Text(previews[i], "sms"));
    EXPECT_EQ(mails[i][QLatin1String("to")][0].toString(), Text(row, "Email"));
    EXPECT_EQ(Text(mails[i], "subject"), Text(previews[i], "subject"));
  }
  EXPECT_EQ(garage.Done(Words("credits")).Object()[QLatin1String("credits")].toDouble(), credits - count);
  for (const QJsonValue& row : garage.Done({QStringLiteral("results"), id}).Rows()) {
    EXPECT_TRUE(row[QLatin1String("Processed")].toBool());
  }
  const QJsonObject log = garage.Done({QStringLiteral("log"), QStringLiteral("--campaign"), id}).Object();
  EXPECT_EQ(log[QLatin1String("results")].toArray(), sent[QLatin1String("log")].toArray());

  // A second send finds nothing left, and leaves the log of the run that sent something.
  const QJsonObject again = garage.Done({QStringLiteral("send"), id, QStringLiteral("--yes")}).Object();
  EXPECT_EQ(again[QLatin1String("sms_sent")].toInt() + again[QLatin1String("email_sent")].toInt(), 0);
  EXPECT_EQ(Recorded(sandbox), 2 * count);
  EXPECT_EQ(garage.Done({QStringLiteral("log"), QStringLiteral("--campaign"), id}).Object()[QLatin1String("results")],
            sent[QLatin1String("log")]);
}

TEST(MarketingCtl, OnlyCustomersWhoConsentedBecomeRows) {
  const Garage garage(300);
  const auto consents = [&](const QStringList& more) {
    std::multiset<int> found;
    const QJsonObject made =
        garage
            .Done(QStringList{QStringLiteral("query"), QStringLiteral("--query"), QStringLiteral("All Customers"),
                              QStringLiteral("--save"), QStringLiteral("Everybody")} +
                  more)
            .Object();
    const QString id = QString::number(made[QLatin1String("campaign")].toInt());
    const QJsonArray rows = garage.Done({QStringLiteral("results"), id}).Rows();
    EXPECT_EQ(rows.size(), made[QLatin1String("step2")].toInt());
    for (const QJsonValue& row : rows)
      found.insert(row[QLatin1String("Consent_Response")].toInt(0));
    garage.Done({QStringLiteral("campaigns"), QStringLiteral("delete"), id});
    return found;
  };
  garage.Done(Words("options set Only_Send_Comms_When_Opted_In on"));
  const auto demanded = consents({});
  EXPECT_GT(demanded.size(), 0U);
  EXPECT_EQ(demanded.count(1), demanded.size());
  garage.Done(Words("options set Only_Send_Comms_When_Opted_In off"));
  const auto open = consents({});
  EXPECT_GT(open.count(0), 0U);
  EXPECT_EQ(open.count(2), 0U) << "opted out";
  EXPECT_GT(consents({QStringLiteral("--include-opted-out")}).count(2), 0U);
}

TEST(MarketingCtl, ATemporaryQueryLeavesNoRowsBehind) {
  const Garage garage;
  const QJsonObject top =
      garage
          .Done({QStringLiteral("query"), QStringLiteral("--query"), QStringLiteral("Top Customers"),
                 QStringLiteral("--records"), QStringLiteral("10")})
          .Object();
  EXPECT_LT(top[QLatin1String("campaign")].toInt(), 0);
  EXPECT_EQ(top[QLatin1String("step1")].toInt(), 10);
  const QString id = QString::number(top[QLatin1String("campaign")].toInt());
  EXPECT_EQ(garage.Run({QStringLiteral("results"), id}).code, 1) << "a negative number is a value, not a flag";
  garage.Sql("CREATE TABLE Probe (n int CHECK (n = 0)); INSERT INTO Probe SELECT Count(*) FROM [Campaign Results]");
}

TEST(MarketingCtl, CampaignsAreMadeChangedCopiedAndDeleted) {
  const Garage garage;
  const QString text = QStringLiteral("O'Neil; \"50%\" \u20ac20 --now");
  const QString id =
      QString::number(garage
                          .Done({QStringLiteral("campaigns"), QStringLiteral("new"), text, QStringLiteral("--query"),
                                 QStringLiteral("MOT due"), QStringLiteral("--sms"), QStringLiteral("@-")},
                                text.toUtf8())
                          .Object()[QLatin1String("ID")]
                          .toInt());
  garage.Done(QStringList{QStringLiteral("campaigns"), QStringLiteral("set"), id} +
              Words("--reminder 6 --year between:2010,2015 --mileage less:90000 --cust-type is-not:Trade --from "
                    "2026-01-01 --no-marketing on"));
  const QString copy =
      QString::number(garage.Done({QStringLiteral("campaigns"), QStringLiteral("copy"), id, QStringLiteral("Second")})
                          .Object()[QLatin1String("ID")]
                          .toInt());
  EXPECT_NE(copy, id);
  garage.Done({QStringLiteral("campaigns"), QStringLiteral("delete"), id});
  EXPECT_EQ(garage.Run({QStringLiteral("campaigns"), QStringLiteral("show"), id}).code, 1);

  const QJsonObject shown = garage.Done({QStringLiteral("campaigns"), QStringLiteral("show"), copy}).Object();
  const QList<QPair<const char*, QJsonValue>> expected = {{"SMS", text},
                                                          {"ReminderID", 5},
                                                          {"UseYearOfManufacture", true},
                                                          {"WhenYearOfManufacture", 3},
                                                          {"ValueYearOfManufacture1", QStringLiteral("2010")},
                                                          {"ValueYearOfManufacture2", QStringLiteral("2015")},
                                                          {"WhenLastKnownMileage", 1},
                                                          {"ValueLastKnownMileage1", QStringLiteral("90000")},
                                                          {"WhenCustType", 1},
                                                          {"ValueCustType", QStringLiteral("Trade")},
                                                          {"UseEnquirySource", false},
                                                          {"Date1", QStringLiteral("2026-01-01")},
                                                          {"Marketing", true}};
  for (const auto& [field, value] : expected)
    EXPECT_EQ(shown[QLatin1String(field)], value) << field;
}

TEST(MarketingCtl, OneRowChangesWhenAskedTo) {
  const Garage garage;
  garage.MakeEverybodyReachable();
  const QString id = garage.MakeCampaign();
  const auto first = [&] { return garage.Done({QStringLiteral("results"), id}).Rows()[0]; };
  const QString record = QString::number(first()[QLatin1String("RecordID")].toInt());
  const auto toggle = [&](const char* flag, const QStringList& more) {
    return garage
        .Run(QStringList{QStringLiteral("results"), id, QStringLiteral("--toggle"), record, QLatin1String(flag)} + more)
        .code;
  };
  EXPECT_EQ(toggle("Send_SMS", {}), 0);
  EXPECT_FALSE(first()[QLatin1String("Send_SMS")].toBool());
  EXPECT_EQ(toggle("Processed", {}), 1);
  EXPECT_FALSE(first()[QLatin1String("Processed")].toBool());
  EXPECT_EQ(toggle("Processed", {QStringLiteral("--yes")}), 0);
  EXPECT_TRUE(first()[QLatin1String("Processed")].toBool());
  // Rows with a mark are not thrown away unasked.
  EXPECT_EQ(garage.Run({QStringLiteral("query"), id}).code, 1);
  EXPECT_TRUE(first()[QLatin1String("Processed")].toBool());
  EXPECT_EQ(garage.Run({QStringLiteral("query"), id, QStringLiteral("--reset-processed")}).code, 0);
  EXPECT_FALSE(first()[QLatin1String("Processed")].toBool());
}

}  // namespace qbx::test
