// The row loop of a mailshot.

#pragma once

#include <QHash>

#include "dispatch/campaign_claim.h"
#include "dispatch/mailshot.h"
#include "dispatch/send_journal.h"
#include "merge/compiled_template.h"

namespace qbx {

/// One pass over the unprocessed rows. Made by `Mailshot` once all checks have passed; used once. Throws DatabaseError
/// when the journal or a mark cannot be written.
class MailshotRun {
 public:
  /// \param sendTexts  false: texts are skipped, their rows stay unprocessed
  MailshotRun(const MailshotServices& services, MailshotObserver& observer, CampaignClaim& claim, int campaignId,
              const MailshotTemplates& templates, MailshotMode mode, bool sendTexts, MailshotSummary& summary);

  /// The summary counts up to where an exception left the run.
  void Run();

 private:
  /// One customer: what the row asks for, merged values, and what has become of it.
  struct Row {
    qint64 recordId = 0;
    bool wantsSms = false;
    bool wantsEmail = false;
    QString customer;
    QString mobile;
    QString email;
    MergeValues values;
    JournalEntry journal;
    bool failed = false;
    bool unfinished = false;  ///< a message was skipped or is in doubt: the row is not processed
    bool inDoubt = false;
    bool marked = false;
  };
  enum class Sent { kYes, kNo, kUncertain, kWithdrawn /* deleted or processed meanwhile at another desk */ };

  [[nodiscard]] bool ReadRows();
  [[nodiscard]] Row CurrentRow() const;
  void SendRow(Row& row);
  void ForgetAttempt(Row& row);
  void SendText(Row& row);
  void SendEmail(Row& row);
  [[nodiscard]] Sent SendSMSToMobile(Row& row, const QString& text);
  [[nodiscard]] Sent ProcessEmail(Row& row, const QString& subject, const QString& body);
  [[nodiscard]] bool Announce(const Row& row, Channel channel);
  /// Writes what came of a message in one transaction: its record, its journal state and, when nothing of the row is
  /// left, the mark.
  template <typename Record>
  void Settle(Row& row, Channel channel, Sent sent, Record record);
  void TellTakenOver();
  void LogWithdrawn(const Row& row);
  [[nodiscard]] bool IsLastMessage(const Row& row, Channel channel) const;
  void Mark(Row& row);
  void Count(Row& row, Sent sent, int& sentCounter, int& failedCounter);
  [[nodiscard]] bool CreditsUsedUp() const;

  const MailshotServices& services_;
  MailshotObserver& observer_;
  CampaignClaim& claim_;
  int campaignId_;
  bool dryRun_;
  bool sendTexts_;
  SendJournal journal_;
  QHash<qint64, JournalEntry> entries_;
  CompiledTemplate sms_;
  CompiledTemplate subject_;
  CompiledTemplate body_;
  QDate today_;
  Recordset rows_;
  CounterValues counters_;
  int done_ = 0;
  int textsLeft_ = 0;  ///< texts of the rows not yet visited
  MailshotSummary& summary_;
};

}  // namespace qbx
