// Many rows changed at once, and the last change taken back.

#include "wizard/result_edits.h"

#include "wizard/wizard_fixture.h"

namespace qbx {
namespace {

class Edits : public test::Wizard {
 protected:
  Edits() {
    campaign_.record.ID = -5;
    host_.Run("INSERT INTO Customers (Customer, Consent_Response) VALUES (3, 2), (4, 1)");
    host_.Run(
        "INSERT INTO [Campaign Results] (RecordID, CampaignID, Customer, Mobile, Email, Address, Created_Date, Year, Processed, Send_Letter) VALUES "
        "(11, -5, 1, '07700 900123', 'a@example.com', 'AV22 5ZR', '2026-01-01', NULL, 0, 0), "
        "(12, -5, 2, '', '', '', NULL, 1999, 1, 1), (13, -5, 3, '07700 900124', 'x' || char(10) || 'b@example.com', 'Here', NULL, 0, 0, 0), "
        "(14, -5, 4, '07700 900125', 'it''s \"b\"@example.com', 'AV22 5ZR', NULL, 0, 0, 0), (15, -6, 4, '07700 900126', '', '', NULL, 0, 0, 0)");
    host_.Run(
        "INSERT INTO Send_Journal (RecordID, Channel, State, CampaignID, UserID, Changed, Reason) VALUES "
        "(12, 1, 1, -5, 'JO', '2026-01-02', NULL), (12, 2, 2, -5, 'JO', '2026-01-02', 'a \"b\" é'), (14, 1, 0, -5, 'JO', '2026-01-03', '')");
    host_.Run("UPDATE [Campaign Results] SET Processed_Date = '2026-01-02 10:00:00.000' WHERE RecordID = 12");
    EXPECT_TRUE(results_.DisplayResults(-5));
  }

  RowChanges changes_{host_.connection, guard_};
  ResultFlags flags_{host_.statements, results_, host_.diagnostics};
  ResultEdits edits_{{.statements = host_.statements,
                      .campaign = campaign_,
                      .guard = guard_,
                      .changes = changes_,
                      .flags = flags_,
                      .results = results_,
                      .options = options_,
                      .loadOptions = [] {}},
                     host_.diagnostics};
};

TEST_F(Edits, RowsThatCannotBeTickedAreLeftAloneAndCounted) {
  RowChange change = edits_.SetFlag(Channel::kSms, true, {11, 12, 13, 14, 14, 15, 99});
  EXPECT_EQ(change.changed, (std::vector<qint64>{11, 14}));
  EXPECT_EQ(ChangeText(change, "ticked"),
            "2 rows ticked; 4 left alone: 2 no longer in the results, 1 no mobile, 1 opted out.");
  EXPECT_EQ(edits_.LastChange(), "2 rows ticked: Send SMS");
  EXPECT_EQ(ChangeText(edits_.SetFlag(Channel::kEmail, true, {12, 13, 14}), "ticked"),
            "1 row ticked; 2 left alone: 1 e-mail address cannot be used, 1 no e-mail address.");
  EXPECT_EQ(ChangeText(edits_.SetFlag(Channel::kLetter, true, {11, 12, 13}), "ticked"),
            "1 row ticked; 1 left alone: 1 no postcode.");
  EXPECT_EQ(edits_.SetFlag(Channel::kLetter, false, {12, 13}).changed, std::vector<qint64>{12});
  EXPECT_EQ(counters_.Values(), (CounterValues{.letters = 1, .sms = 2, .emails = 1}));
  EXPECT_EQ(host_.Rows("SELECT RecordID FROM [Campaign Results] WHERE CampaignID = -6 AND Send_SMS = 1"),
            QStringList());
}

TEST_F(Edits, UndoLeavesAloneWhatChangedSince) {
  edits_.SetFlag(Channel::kSms, true, {11, 14});
  host_.Run(
      "INSERT INTO Send_Journal (RecordID, Channel, State, CampaignID, Changed) VALUES (11, 1, 1, -5, '2026-01-04')");
  host_.Run("UPDATE [Campaign Results] SET Processed = 1 WHERE RecordID = 11");
  EXPECT_EQ(ChangeText(edits_.Undo(), "put back"), "1 row put back; 1 left alone: 1 changed since.");
  EXPECT_TRUE(results_.Rows().Field("Processed").ToBool()) << "the row that was left alone is shown as it is now";
  EXPECT_TRUE(host_.Ask("SELECT Send_SMS FROM [Campaign Results] WHERE RecordID = 11").ToBool());

  flags_.ToggleCheckBox("Processed", 12);  // forgets what went out, which a run then sends again
  host_.Run(
      "INSERT INTO Send_Journal (RecordID, Channel, State, CampaignID, Changed) VALUES (12, 1, 1, -5, '2026-01-04')");
  EXPECT_EQ(edits_.Undo().changed.size(), 0U);

  edits_.TakeOut({11});
  host_.Run("INSERT INTO [Campaign Results] (CampaignID, Customer) VALUES (-5, 1)");  // another desk's query
  EXPECT_EQ(edits_.Undo().changed.size(), 0U);
}

TEST_F(Edits, AFailureAfterAFlipTakesItBackAndIsReported) {
  // Undo reads the state before the flip and after it.
  host_.Run(
      "DROP VIEW Campaign_Results_States; CREATE VIEW Campaign_Results_States AS SELECT RecordID, CASE Send_Email WHEN 0 THEN '' ELSE RaiseError(50000, 'not now') END AS State FROM [Campaign Results]");
  const QString rows = "SELECT * FROM [Campaign Results] ORDER BY 1";
  const QStringList before = host_.Rows(rows);
  EXPECT_NO_THROW(edits_.ClickCell("Send_Email", 14));
  EXPECT_EQ(host_.Rows(rows), before);
  EXPECT_EQ(host_.ui.Messages().size(), 1U);
  EXPECT_FALSE(host_.ui.Busy());
}

}  // namespace
}  // namespace qbx
