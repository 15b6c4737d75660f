// The send-method rules on the rows of a real host database, and the merge values read from them.

#include <gtest/gtest.h>

#include "results/merge_row.h"
#include "results/send_methods.h"
#include "settings/options.h"
#include "support/embedded_host.h"

namespace qbx {
namespace {

class SendMethodsHostTest : public testing::Test {
 protected:
  void SetUp() override {
    host.Run(
        "INSERT INTO [Campaign Results] (RecordID, CampaignID, Mobile, Email, Can_Send_SMS, Can_Send_Email, "
        "Can_Send_Letter) VALUES "
        "(1, 12, '07700900001', 'ann@example.com', 1, 1, 1), (2, 12, '12345', 'b@b.c   ', 1, NULL, 0), "
        "(3, 12, '      ', '@example.com', NULL, 1, 1), (4, 12, '123456', 'noaddress', 0, 0, NULL), "
        "(5, 12, '', '', 1, 1, 1), (6, 12, '07700900006', '', 1, 0, 1), (7, 13, '07700900007', 'eve@example.com', 1, 1, 1)");
  }
  /// The rows with a flag, "1 2 3".
  QString With(const QString& flag) {
    return host.Rows(QString("SELECT RecordID FROM [Campaign Results] WHERE %1 = 1 ORDER BY RecordID").arg(flag))
        .join(u' ');
  }

  test::EmbeddedHost host;
};

TEST_F(SendMethodsHostTest, RulesTakeTheRowsTheyName) {
  EXPECT_TRUE(SetSendMethods(host.statements, {.sms = 0, .email = 0, .letter = 0}, 12, {}));
  EXPECT_EQ(With("Send_SMS"), "1 4 6");
  EXPECT_EQ(With("Send_Email"), "1 2");
  EXPECT_EQ(With("Send_Letter"), "1 2 3 4 5 6");

  EXPECT_TRUE(SetSendMethods(host.statements, {.sms = 6, .email = 5, .letter = 5}, 12, {}));  // no such rules
  EXPECT_TRUE(SetSendMethods(host.statements, {.sms = 1, .letter = 1}, 12, {}));
  EXPECT_EQ(With("Send_SMS") + With("Send_Letter"), QString());
  EXPECT_EQ(With("Send_Email"), "1 2");

  EXPECT_TRUE(SetSendMethods(host.statements, {.sms = 5}, 12, {}));
  EXPECT_EQ(With("Send_SMS"), "2 4 6");

  Options consent;
  consent.Using_Vrelo = true;
  consent.Only_Send_Comms_When_Opted_In = true;
  EXPECT_TRUE(SetSendMethods(host.statements, {.sms = 1, .email = 1, .letter = 1}, 12, consent));
  EXPECT_TRUE(SetSendMethods(host.statements, {.sms = 2, .email = 0, .letter = 0}, 12, consent));
  EXPECT_EQ(With("Send_SMS"), "1 2 5 6");
  EXPECT_EQ(With("Send_Email"), "1");
  EXPECT_EQ(With("Send_Letter"), "1 3 5 6");
  EXPECT_EQ(host.Ask("SELECT BySMS FROM Campaign_Results_Counters WHERE CampaignID = 12").ToInt(), 4);
}

TEST_F(SendMethodsHostTest, ABatchThatRanStaysWhenAnotherFails) {
  host.Run(
      "CREATE TRIGGER No_Mail BEFORE UPDATE OF Send_Email ON [Campaign Results] BEGIN SELECT RaiseError(50000, 'No mail.'); END");
  EXPECT_FALSE(SetSendMethods(host.statements, {.sms = 0, .email = 0, .letter = 0}, 12, {}));
  EXPECT_EQ(With("Send_SMS"), "1 4 6");
  EXPECT_EQ(With("Send_Email"), QString());
  EXPECT_EQ(With("Send_Letter"), "1 2 3 4 5 6");
  EXPECT_EQ(host.ui.Messages().size(), 1u);
}

TEST_F(SendMethodsHostTest, AnExceptRuleThatFailsHalfWayLeavesTheFlagsAsTheyWere) {
  host.Run(
      "UPDATE [Campaign Results] SET Send_SMS = 1, Send_Letter = 1 WHERE RecordID = 2; "
      "CREATE TRIGGER No_Except BEFORE UPDATE OF Send_SMS ON [Campaign Results] WHEN NEW.Send_SMS = 0 "
      "BEGIN SELECT RaiseError(50000, 'No except.'); END");
  EXPECT_FALSE(SetSendMethods(host.statements, {.sms = 3, .email = 0}, 12, {}));
  EXPECT_EQ(With("Send_SMS"), "2");
  EXPECT_EQ(With("Send_Email"), "1 2");
  EXPECT_EQ(host.ui.Messages().size(), 1u);
}

TEST_F(SendMethodsHostTest, MergeValuesComeFromTheRow) {
  host.Run(
      "UPDATE [Campaign Results] SET Title = 'Mrs', Firstname = 'Ann', Lastname = 'Lee', Contact = 'Mrs Lee', Make = "
      "'Ford', "
      "Model = 'Focus', Vehicle = 'AB12 CDE', Recall_Date = '2026-03-27 00:00:00' WHERE RecordID = 1; "
      "UPDATE [Campaign Results] SET Contact = '  ' WHERE RecordID = 2");
  Recordset rows = host.Run("SELECT * FROM [Campaign Results] ORDER BY RecordID");
  const auto joined = [](const MergeValues& v) {
    return QStringList{v.title, v.firstname, v.lastname, v.contact, v.make, v.model, v.regno, v.duedate, v.duetime}
        .join(u'|');
  };
  EXPECT_EQ(joined(MergeRow(rows, BlankContact::kBecomesCustomer)),
            "Mrs|Ann|Lee|Mrs Lee|Ford|Focus|AB12 CDE|27/03/2026|");
  rows.MoveNext();
  EXPECT_EQ(joined(MergeRow(rows, BlankContact::kBecomesCustomer)), "|||Customer|||||");
  EXPECT_EQ(joined(MergeRow(rows, BlankContact::kStaysBlank)), "|||  |||||");
  rows.MoveNext();
  EXPECT_EQ(joined(MergeRow(rows, BlankContact::kBecomesCustomer)), "|||Customer|||||");
}

}  // namespace
}  // namespace qbx
