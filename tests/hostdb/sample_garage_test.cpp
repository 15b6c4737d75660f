// The sample garage: the same every time, believable, and harmless.

#include "hostdb/sample_garage.h"

#include <sqlite3.h>

#include <QRegularExpression>

#include "hostdb/sample_person.h"
#include "support/embedded_host.h"

namespace qbx {
namespace {

const QDate kDay(2026, 3, 4);

class SampleGarage : public ::testing::Test, public test::EmbeddedHost {
 protected:
  using EmbeddedHost::Run;

  SampleGarage() {
    connection.Close();
    const HostDatabaseProblem problem =
        MakeSampleGarage(folder.File(QStringLiteral("Garage.db")), {2000, 1, kDay}, ExistingFile::kReplace);
    EXPECT_EQ(problem, std::nullopt);
    connection.Reopen();
  }
};

TEST(SampleGarageFile, IsTheSameForTheSameSettings) {
  const test::TempFolder folder;
  const auto make = [&folder](const char* name, const SampleGarageSettings& settings) {
    EXPECT_EQ(MakeSampleGarage(folder.File(QLatin1String(name)), settings, ExistingFile::kReplace), std::nullopt);
    return folder.Read(QLatin1String(name));
  };
  const QByteArray first = make("a.db", {120, 4, kDay});
  EXPECT_EQ(make("b.db", {120, 4, kDay}), first);
  EXPECT_NE(make("c.db", {120, 5, kDay}), first);
  EXPECT_NE(make("d.db", {120, 4, kDay.addDays(1)}), first);
}

TEST(SampleGarageFile, RefusesSettingsThatMakeNoSense) {
  const test::TempFolder folder;
  const QString path = folder.File(QStringLiteral("a.db"));
  EXPECT_TRUE(MakeSampleGarage(path, {10, 1, QDate()}, ExistingFile::kReplace).has_value());
  EXPECT_TRUE(MakeSampleGarage(path, {-1, 1, kDay}, ExistingFile::kReplace).has_value());
  EXPECT_EQ(folder.Names(), QStringList());
}

TEST_F(SampleGarage, TheTwoMainCampaignsReachABelievableShareAndTheFailingRecipients) {
  const QStringList lapsed =
      Rows(QStringLiteral("SELECT CampaignTypeID, Date1, Date2 FROM Marketing_Campaigns "
                          "WHERE Campaign_Name = 'Lapsed customers'"));
  EXPECT_EQ(lapsed, QStringList(QStringLiteral("3|04/03/2024|04/03/2026")));
  EXPECT_EQ(
      Rows(QStringLiteral(
          "SELECT CampaignTypeID, ReminderID, Date1, Date2 FROM Marketing_Campaigns WHERE Campaign_Name = 'MOT due'")),
      QStringList(QStringLiteral("10|0|04/03/2026|04/05/2026")));
  for (const char* query : {"proc_Marketing_AddAllCustomers -1, 'T', '2024-03-04', '2026-03-04', @Lapsed = 1",
                            "proc_Marketing_AddAllVehicles -1, 'T', '2026-03-04', '2026-05-04', @Recall_ID = 1"}) {
    const qint64 rows = Run(QLatin1String(query)).RecordCount();
    EXPECT_GE(rows, 100) << query;
    EXPECT_LE(rows, 400) << query;
    EXPECT_GE(Ask(QStringLiteral(
                      "SELECT COUNT(DISTINCT Customer) FROM [Campaign Results] WHERE CampaignID = -1 AND "
                      "Consent_Response = 1 "
                      "AND (Mobile IN ('07700900902', '07700900903', '07700900922', '07700900931', '07700900933') OR "
                      "Email IN ('refused@example.com', 'tempfail@example.com', 'nodata@example.com'))"))
                  .ToInt(),
              kFailingKinds)
        << query;
  }
}

// What each description says, counted without the procedures.
TEST_F(SampleGarage, ACampaignSelectsWhatItsDescriptionSays) {
  const QString reachable = QStringLiteral("No_Marketing = 0 AND IsNull(Consent_Response, 0) <> 2 AND ");
  const QString lastInvoice =
      QStringLiteral("(SELECT max(Invoice_Date) FROM Services s WHERE s.Customer = c.Customer AND Record_Type = 0) ");
  const auto customers = [&](const char* condition) {
    return QStringLiteral("SELECT COUNT(*) FROM Customers c WHERE ") + reachable + QLatin1String(condition);
  };
  const auto vehicles = [&](const char* condition) {
    return QStringLiteral("SELECT COUNT(*) FROM Customers c JOIN Vehicles v USING (Customer) WHERE ") + reachable +
           QLatin1String(condition);
  };
  struct Described {
    const char* description;
    const char* call;
    QString expected;
  };
  const Described cases[] = {
      {"Customers whose last invoice is more than two years old.", "Customers -1, 'T', '%1', '%2', @Lapsed = 1",
       customers("{last} < '2024-03-04'")},
      {"Vehicles whose MOT is due within the next two months.", "Vehicles -1, 'T', '%1', '%2', @Recall_ID = 1",
       vehicles("Recall_Date1 BETWEEN '2026-03-04' AND '2026-05-04'")},
      {"Everybody who was invoiced within the last three months.", "Customers -1, 'T', '%1', '%2', @Recent = 1",
       customers("{last} >= '2025-12-04'")},
      {"The 25 customers who spent most within twelve months.",
       "Customers -1, 'T', '%1', '%2', @Top = 1, @Criteria = 25", QStringLiteral("SELECT 25")},
      {"Vehicles of three makes, for the specialist's day.",
       "Vehicles -1, 'T', '%1', '%2', @Makes = 'Audi,BMW,Volkswagen'",
       vehicles("Make IN ('Audi', 'BMW', 'Volkswagen')")},
      {"All vehicles with a last known mileage above 80,000.",
       "Vehicles -1, 'T', '%1', '%2', @FilterMileage = 1, @FromMileage = 80000", vehicles("Last_Mileage > 80000")}};
  const QStringList stored = Rows(
      QStringLiteral("SELECT Campaign_Description, date(Date1), date(Date2) FROM Marketing_Campaigns ORDER BY ID"));
  ASSERT_EQ(static_cast<size_t>(stored.size()), std::size(cases));
  for (qsizetype i = 0; i < stored.size(); ++i) {
    const Described& each = cases[i];
    EXPECT_EQ(stored[i].section('|', 0, 0), each.description);
    const QString call = QStringLiteral("proc_Marketing_AddAll") + QLatin1String(each.call);
    const qint64 rows = Run(call.arg(stored[i].section('|', 1, 1), stored[i].section('|', 2, 2))).RecordCount();
    EXPECT_EQ(rows, Ask(QString(each.expected).replace(QLatin1String("{last}"), lastInvoice)).ToInt())
        << each.description;
  }
}

TEST_F(SampleGarage, EveryQueryFindsSomething) {
  for (const char* query :
       {"Customers -1, 'T'", "Customers -1, 'T', '2025-12-04', '2026-03-04', @Recent = 1",
        "Customers -1, 'T', '2025-03-04', '2026-03-04', @Top = 1, @Criteria = 25",
        "Vehicles -1, 'T', @Makes = 'Audi,BMW,Volkswagen'",
        "Vehicles -1, 'T', '2026-03-04', '2026-06-04', @Recall_ID = 6",
        "Vehicles -1, 'T', @FilterMileage = 1, @FromMileage = 80000", "Engines -1, 'T', @Makes = 'Yanmar'"})
    EXPECT_GT(Run(QStringLiteral("proc_Marketing_AddAll") + QLatin1String(query)).RecordCount(), 4) << query;
  for (const char* list :
       {"proc_sel_Makes_all (0)", "proc_sel_Makes_all (5)", "proc_sel_Customer_Types", "proc_sel_Enquiry_Source"})
    EXPECT_GE(Run(QLatin1String(list)).RecordCount(), 6) << list;
  EXPECT_EQ(Rows(QStringLiteral("SELECT DISTINCT IsNull(Consent_Response, -1) FROM Customers ORDER BY 1")),
            QStringList({QStringLiteral("-1"), QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2")}));
}

TEST_F(SampleGarage, NobodyRealCanBeReached) {
  const QRegularExpression mobile(QStringLiteral("^07700900[0-8]\\d\\d$"));
  const QRegularExpression telephone(QStringLiteral("^01632 960\\d{3}$"));
  const QRegularExpression domain(QStringLiteral("(@example\\.(com|org|net)|at\\.sign\\.example\\.com)$"));
  Recordset rows = Run(QStringLiteral("SELECT Customer, Mobile, Telephone, Email FROM Customers"));
  int awkward = 0;
  for (; !rows.Eof(); rows.MoveNext()) {
    const QString number = rows.Field(1).ToText();
    const QString customer = rows.Field(0).ToText();
    // Awkward numbers are ordinary ones, disguised: only their digits count.
    const QString digits = QString(number)
                               .remove(QRegularExpression(QStringLiteral("\\D")))
                               .replace(QStringLiteral("44770"), QStringLiteral("0770"));
    if (!number.isEmpty() && !mobile.match(number).hasMatch()) {
      ++awkward;
      EXPECT_TRUE(digits.startsWith(QStringLiteral("07700900")) || digits == QStringLiteral("07700") ||
                  digits == QStringLiteral("01632960555"))
          << customer.toStdString() << ' ' << number.toStdString();
    }
    if (!rows.Field(2).IsNull()) {
      EXPECT_TRUE(telephone.match(rows.Field(2).ToText()).hasMatch()) << customer.toStdString();
    }
    for (const QString& address : rows.Field(3).ToText().split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
      const bool isBlank = address.trimmed().isEmpty();
      EXPECT_TRUE(isBlank || domain.match(address).hasMatch()) << address.toStdString();
    }
  }
  EXPECT_EQ(awkward, 13);
  EXPECT_EQ(Rows(QStringLiteral("SELECT SMS_Server, SMTP_Server FROM _Options")),
            QStringList(QStringLiteral("sms.invalid|mail.invalid")));
}

}  // namespace
}  // namespace qbx
