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
        MakeSampleGarage(folder.File("Garage.db"), {2000, 1, kDay}, ExistingFile::kReplace);
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

// What each description says, counted without the procedures.
TEST_F(SampleGarage, ACampaignSelectsWhatItsDescriptionSays) {
  const QString reachable = "No_Marketing = 0 AND IsNull(Consent_Response, 0) <> 2 AND ";
  const QString lastInvoice =
      "(SELECT max(Invoice_Date) FROM Services s WHERE s.Customer = c.Customer AND Record_Type = 0) ";
  const auto customers = [&](const char* condition) {
    return QString("SELECT COUNT(*) FROM Customers c WHERE ") + reachable + QLatin1String(condition);
  };
  const auto vehicles = [&](const char* condition) {
    return QString("SELECT COUNT(*) FROM Customers c JOIN Vehicles v USING (Customer) WHERE ") + reachable +
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
       "Customers -1, 'T', '%1', '%2', @Top = 1, @Criteria = 25", "SELECT 25"},
      {"Vehicles of three makes, for the specialist's day.",
       "Vehicles -1, 'T', '%1', '%2', @Makes = 'Audi,BMW,Volkswagen'",
       vehicles("Make IN ('Audi', 'BMW', 'Volkswagen')")},
      {"All vehicles with a last known mileage above 80,000.",
       "Vehicles -1, 'T', '%1', '%2', @FilterMileage = 1, @FromMileage = 80000", vehicles("Last_Mileage > 80000")}};
  const QStringList stored =
      Rows("SELECT Campaign_Description, date(Date1), date(Date2) FROM Marketing_Campaigns ORDER BY ID");
  ASSERT_EQ(static_cast<size_t>(stored.size()), std::size(cases));
  for (qsizetype i = 0; i < stored.size(); ++i) {
    const Described& each = cases[i];
    EXPECT_EQ(stored[i].section('|', 0, 0), each.description);
    const QString call = QString("proc_Marketing_AddAll") + QLatin1String(each.call);
    const qint64 rows = Run(call.arg(stored[i].section('|', 1, 1), stored[i].section('|', 2, 2))).RecordCount();
    EXPECT_EQ(rows, Ask(QString(each.expected).replace("{last}", lastInvoice)).ToInt()) << each.description;
  }
}

TEST_F(SampleGarage, NobodyRealCanBeReached) {
  const QRegularExpression mobile("^07700900[0-8]\\d\\d$");
  const QRegularExpression telephone("^01632 960\\d{3}$");
  const QRegularExpression domain("(@example\\.(com|org|net)|at\\.sign\\.example\\.com)$");
  Recordset rows = Run("SELECT Customer, Mobile, Telephone, Email FROM Customers");
  int awkward = 0;
  for (; !rows.Eof(); rows.MoveNext()) {
    const QString number = rows.Field(1).ToText();
    const QString customer = rows.Field(0).ToText();
    // Awkward numbers are ordinary ones, disguised: only their digits count.
    const QString digits = QString(number).remove(QRegularExpression("\\D")).replace("44770", "0770");
    if (!number.isEmpty() && !mobile.match(number).hasMatch()) {
      ++awkward;
      EXPECT_TRUE(digits.startsWith("07700900") || digits == "07700" || digits == "01632960555")
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
  EXPECT_EQ(Rows("SELECT SMS_Server, SMTP_Server FROM _Options"), QStringList("sms.invalid|mail.invalid"));
}

}  // namespace
}  // namespace qbx
