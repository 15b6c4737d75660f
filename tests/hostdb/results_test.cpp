// What the database itself keeps true about the rows of a campaign: counters, dates, the send journal.

#include "hostdb/random_source.h"
#include "support/embedded_host.h"

namespace qbx {
namespace {

class Results : public ::testing::Test, public test::EmbeddedHost {
 protected:
  using EmbeddedHost::Run;

  /// Adds a row of a customer who has nothing against messages, and returns its key.
  qint64 AddRow(int campaign, const char* flags = "0, 0, 0, 0") {
    Run("INSERT INTO Customers (Customer) SELECT 7 WHERE NOT EXISTS (SELECT 1 FROM Customers)");
    Run(QString("INSERT INTO [Campaign Results] (CampaignID, Customer, Send_SMS, Send_Email, Send_Letter, Processed) "
                "VALUES (%1, 7, %2)")
            .arg(campaign)
            .arg(flags));
    return Ask("SELECT max(RecordID) FROM [Campaign Results]").ToInt();
  }
  void Toggle(qint64 record, const char* column) {
    Run(QString("proc_updp_Marketing_ToggleCheckbox %1, '%2'").arg(record).arg(column));
  }
  QStringList Journal(qint64 record) {
    return Rows(QString("SELECT Channel, State FROM Send_Journal WHERE RecordID = %1 ORDER BY Channel").arg(record));
  }
  /// What writing to the journal returns: the key of the row, NULL for none.
  Value Note(qint64 record, int campaign, int channel, int state) {
    return Ask(
        QString("proc_updp_Send_Journal %1, %2, %3, %4, 'TESTER'").arg(record).arg(campaign).arg(channel).arg(state));
  }
};

TEST_F(Results, CountersAgreeWithACountWhateverHappens) {
  RandomSource random(7, 1);
  const auto number = [&random](int from, int to) { return QString::number(random.Between(from, to)); };
  const QString rows = "[Campaign Results]";
  const QString count =
      "SELECT IsNull(SUM(0 + Send_Letter), 0), IsNull(SUM(0 + Send_SMS), 0), IsNull(SUM((0 + Send_SMS) * Processed), 0), "
      "IsNull(SUM(0 + Send_Email), 0), IsNull(SUM((0 + Send_Email) * Processed), 0) FROM [Campaign Results] WHERE CampaignID = %1";
  connection.Driver().Begin();
  for (int step = 0; step < 400; ++step) {
    const char* change =
        random.Pick(std::array{"", "", "UPDATE {rows} SET {flag} = {bit} WHERE CampaignID = {id}",
                               "UPDATE {rows} SET {flag} = 1 - {flag} WHERE RecordID % 3 = {2}",
                               "UPDATE {rows} SET CampaignID = {other} WHERE CampaignID = {id} AND RecordID % 5 = 0",
                               "UPDATE {rows} SET CampaignID = {id}, Send_SMS = 1 - Send_SMS WHERE RecordID % 7 = 0",
                               "DELETE FROM {rows} WHERE RecordID % 11 = {10}"});
    if (*change == 0)
      AddRow(random.Between(-1, 1), random.Pick(std::array{"0, 0, 0, 0", "1, 0, 1, 0", "1, 1, 0, 1", "0, 1, 0, 1"}));
    else
      Run(QString(change)
              .replace("{rows}", rows)
              .replace("{flag}", random.Pick(std::array{"Send_SMS", "Send_Email", "Send_Letter", "Processed"}))
              .replace("{bit}", number(0, 1))
              .replace("{id}", number(-1, 1))
              .replace("{other}", number(-1, 1))
              .replace("{2}", number(0, 2))
              .replace("{10}", number(0, 10)));
    for (int id = -1; id <= 1; ++id)
      ASSERT_EQ(Rows(QString("proc_selp_Results_Counters (%1)").arg(id)), Rows(count.arg(id)))
          << "step " << step << ", campaign " << id;
  }
  connection.Driver().Commit();
}

TEST_F(Results, ToggleFlipsTheFourFlagsAndNothingElse) {
  const qint64 record = AddRow(3);
  const qint64 other = AddRow(3);
  const QString flags =
      "SELECT Send_SMS, Send_Email, Send_Letter, Processed FROM [Campaign Results] WHERE RecordID = %1";
  Toggle(record, "Send_SMS");
  Toggle(record, "send_letter");
  Toggle(record, "Send_Email");
  Toggle(record, "Send_Email");
  EXPECT_EQ(Rows(flags.arg(record)), QStringList("True|False|True|False"));
  EXPECT_EQ(Rows(flags.arg(other)), QStringList("False|False|False|False"));
  try {
    connection.Driver().Execute(QString("proc_updp_Marketing_ToggleCheckbox %1, 'Marketing'").arg(record));
    ADD_FAILURE() << "a column that is no flag must be refused";
  } catch (const DatabaseError& error) {
    EXPECT_EQ(error.Errors().front().number, 50000);
    EXPECT_TRUE(error.Description().contains("'Marketing'")) << error.Description().toStdString();
  }
}

TEST_F(Results, UnknownMobilesAndEmailsAreEmpty) {
  Run("INSERT INTO [Campaign Results] (RecordID, CampaignID, Mobile) VALUES (1, 3, NULL), (2, 3, '07700900001')");
  Run("UPDATE [Campaign Results] SET Mobile = NULL WHERE RecordID = 2");
  Run("INSERT INTO Customers (Customer) VALUES (7)");
  Run("proc_Marketing_AddAllCustomers 4, 'TESTER'");
  EXPECT_EQ(Rows("SELECT COUNT(*) FROM [Campaign Results] WHERE Mobile = '' AND Email = ''"), QStringList("3"));
}

TEST_F(Results, ProcessedDateFollowsTheFlag) {
  const qint64 record = AddRow(3, "1, 0, 0, 0");
  const QString date = QString("SELECT Processed_Date FROM [Campaign Results] WHERE RecordID = %1").arg(record);
  Run(QString("UPDATE [Campaign Results] SET Processed = 1 WHERE RecordID = %1").arg(record));
  const QDateTime first = Ask(date).ToDateTime();
  EXPECT_EQ(first, clock.Now());
  clock.AdvanceDays(1);
  Run("UPDATE [Campaign Results] SET Processed = 1 WHERE CampaignID = 3");
  EXPECT_EQ(Ask(date).ToDateTime(), first) << "a row that was processed stays as it is";
  Toggle(record, "Processed");
  EXPECT_TRUE(Ask(date).IsNull());
}

TEST_F(Results, TheJournalKnowsWhatIsInDoubt) {
  const qint64 first = AddRow(3);
  const qint64 second = AddRow(3);
  Run(QString("UPDATE [Campaign Results] SET Mobile = '07700900001' WHERE RecordID = %1").arg(second));
  EXPECT_TRUE(Note(second, 3, 1, 0).IsNull()) << "a row without the flag must not be sent to";
  Run("UPDATE [Campaign Results] SET Send_SMS = 1, Send_Email = 1");
  EXPECT_EQ(Note(second, 3, 1, 0).ToInt(), second);
  EXPECT_TRUE(Note(second, 3, 1, 0).IsNull()) << "a message that was begun must not be begun again";
  Note(first, 3, 2, 0);
  EXPECT_EQ(Note(first, 3, 2, 1).ToInt(), first);
  EXPECT_EQ(Rows("proc_selp_Send_Journal (3)"),
            QStringList({QString("%1|2|1").arg(first), QString("%1|1|0").arg(second)}));
  Recordset doubt = Run("proc_selp_Send_Troubles (3)");
  ASSERT_EQ(doubt.RecordCount(), 1);
  EXPECT_EQ(doubt.Field("Mobile").ToText(), "07700900001");
  EXPECT_EQ(doubt.Field("Changed").ToDateTime(), clock.Now());
  Run(QString("proc_delp_Send_Journal (%1, 2)").arg(first));
  EXPECT_EQ(Journal(first), QStringList());
}

TEST_F(Results, TheJournalGoesWithItsRow) {
  const qint64 moved = AddRow(-3);
  const qint64 deleted = AddRow(-3);
  Run("UPDATE [Campaign Results] SET Send_SMS = 1");
  Note(moved, -3, 1, 0);
  Note(deleted, -3, 1, 0);
  Run("UPDATE [Campaign Results] SET CampaignID = 5 WHERE CampaignID = -3");
  Run(QString("proc_delp_Campaign_Results (%1)").arg(deleted));
  EXPECT_EQ(Rows("SELECT RecordID, CampaignID FROM Send_Journal"), QStringList(QString("%1|5").arg(moved)));
  EXPECT_TRUE(Note(deleted, 5, 1, 0).IsNull()) << "a row that is gone must not be sent to";
  EXPECT_TRUE(Note(moved, -3, 1, 0).IsNull());
  EXPECT_EQ(Note(moved, 5, 1, 1).ToInt(), moved);
}

}  // namespace
}  // namespace qbx
