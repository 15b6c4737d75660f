// The row loop of a mailshot.

#pragma once

#include "dispatch/campaign_claim.h"
#include "dispatch/due_rows.h"
#include "dispatch/mailshot.h"
#include "dispatch/send_journal.h"
#include "dispatch/send_refusals.h"
#include "dispatch/server_watch.h"

namespace qbx {

/// What was settled before a run begins.
struct MailshotPlan {
  int campaignId = 0;
  MailshotMode mode = MailshotMode::kSend;
  bool sendTexts = true;         ///< false: texts are skipped, their rows stay unprocessed
  bool repeatDelivered = false;  ///< where one half of a row failed, the half that was delivered goes again
};

/// One pass over the unprocessed rows. Made by `Mailshot` once all checks have passed; used once. Throws DatabaseError
/// when the journal or a mark cannot be written.
class MailshotRun {
 public:
  MailshotRun(const MailshotServices& services, MailshotObserver& observer, CampaignClaim& claim,
              const MailshotPlan& plan, const MailshotTemplates& templates, MailshotSummary& summary);

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
    bool unfinished = false;  ///< a message was skipped, left out or is in doubt: the row is not processed
    bool inDoubt = false;
    QString leftOut = {};  ///< why a message was left out
    bool withdrawn = false;
    bool marked = false;
  };
  enum class Sent {
    kYes,
    kNo,
    kUncertain,
    kLeftOut,    ///< the customer has said no since the row was selected
    kWithdrawn,  ///< deleted or processed meanwhile at another desk
  };
  /// One of the two ways to send.
  struct ChannelState {
    bool open = true;
    bool paused = false;  ///< closed by this run, because its server is away
    int left = 0;         ///< messages of the rows not yet visited that are still to be tried
    ServerWatch server;
  };

  [[nodiscard]] bool ReadRows();
  [[nodiscard]] Row CurrentRow() const;
  void SendRow(Row& row);
  void SendText(Row& row);
  void SendEmail(Row& row);
  [[nodiscard]] Sent SendSMSToMobile(Row& row);
  [[nodiscard]] Sent ProcessEmail(Row& row);
  /// Writes "sending".
  /// \return why the message must not go; nothing when it may
  [[nodiscard]] std::optional<Sent> Announce(Row& row, Channel channel);
  [[nodiscard]] std::optional<Sent> AnnounceDry(Row& row, Channel channel);
  void LeaveOut(Row& row, Channel channel, Refusal refusal);
  /// Writes what came of a message in one transaction: its record, its journal state and, when nothing of the row is
  /// left, the mark.
  /// \param reason  of a failure
  template <typename Record>
  void Settle(Row& row, Channel channel, Sent sent, const QString& reason, Record record);
  void TellTakenOver();
  void LogWithdrawn(const Row& row);
  [[nodiscard]] bool IsLastMessage(const Row& row, Channel channel) const;
  void Mark(Row& row);
  void Count(Row& row, Channel channel, Sent sent);
  /// Whether this run is going to try a message of a row that asks for it, as things stood when it began.
  [[nodiscard]] bool WillTry(qint64 recordId, const JournalEntry& entry, Channel channel, const QString& mobile) const;
  /// Whether the half of a row that was delivered goes again, because the user wants that and the half that failed is tried now.
  [[nodiscard]] bool Repeats(Channel channel) const;
  /// Pauses a channel whose server is away, unless the user says otherwise.
  void NoteServer(Channel channel, ServerSign sign, const QString& failure);
  [[nodiscard]] ChannelState& StateOf(Channel channel) { return channel == Channel::kSms ? texts_ : emails_; }
  [[nodiscard]] bool AllThatIsLeftIsPaused() const;
  [[nodiscard]] bool CreditsUsedUp() const;

  const MailshotServices& services_;
  MailshotObserver& observer_;
  CampaignClaim& claim_;
  MailshotPlan plan_;
  bool dryRun_;
  SendJournal journal_;
  SendRefusals refusals_;
  DueRows due_;  ///< when the run began
  MessageMaker messages_;
  Recordset rows_;
  CounterValues counters_;
  int done_ = 0;
  ChannelState texts_;
  ChannelState emails_;
  MailshotSummary& summary_;
};

}  // namespace qbx
