// The sample garage: the same every time, and harmless.

#include "hostdb/sample_garage.h"

#include <QRegularExpression>

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
    EXPECT_EQ(MakeSampleGarage(folder.File(name), settings, ExistingFile::kReplace), std::nullopt);
    return folder.Read(name);
  };
  const QByteArray first = make("a.db", {120, 4, kDay});
  EXPECT_EQ(make("b.db", {120, 4, kDay}), first);
  EXPECT_NE(make("c.db", {120, 5, kDay}), first);
  EXPECT_NE(make("d.db", {120, 4, kDay.addDays(1)}), first);
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
