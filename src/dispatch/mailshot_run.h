// The row loop of a mailshot.

#pragma once

#include <functional>

#include "dispatch/campaign_claim.h"
#include "dispatch/due_rows.h"
#include "dispatch/mailshot.h"
#include "dispatch/send_journal.h"
#include "dispatch/send_refusals.h"
#include "dispatch/server_watch.h"

namespace qbx {

/// What is decided before a run begins.
struct MailshotPlan {
  int campaignId = 0;
  MailshotMode mode = MailshotMode::kSend;
  bool sendTexts = true;         ///< false: texts are skipped and their rows stay unprocessed
  bool repeatDelivered = false;  ///< whether a delivered message is sent again when the other message of its row failed
};

/// One pass over the unprocessed rows. `Mailshot` makes it after all checks; it is used once. Throws DatabaseError when
/// the journal or a mark cannot be written.
class MailshotRun {
 public:
  MailshotRun(const MailshotServices& services, MailshotObserver& observer, CampaignClaim& claim,
              const MailshotPlan& plan, const MailshotTemplates& templates, MailshotSummary& summary);

  /// If an exception ends the run, the summary counts everything up to it.
  void Run();

 private:
  /// One customer: what the row asks for, its merge values, and what happened to its messages.
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
    bool unfinished = false;  ///< a message was skipped, left out or is in doubt, so the row is not processed
    bool inDoubt = false;
    QString leftOut = {};  ///< why a message was left out
    bool withdrawn = false;
    bool marked = false;
  };
  enum class Sent {
    kYes,
    kNo,
    kUncertain,
    kLeftOut,    ///< the customer said no after the row was selected
    kWithdrawn,  ///< another desk deleted or processed the row meanwhile
  };
  /// The state of texts or of e-mails.
  struct ChannelState {
    bool open = true;
    bool paused = false;  ///< paused by this run because its server is unavailable
    int left = 0;         ///< number of messages still to be tried in rows not yet visited
    ServerWatch server;
  };

  [[nodiscard]] bool ReadRows();
  [[nodiscard]] Row CurrentRow() const;
  void SendRow(Row& row);
  void SendText(Row& row);
  void SendEmail(Row& row);
  [[nodiscard]] Sent SendSMSToMobile(Row& row);
  [[nodiscard]] Sent ProcessEmail(Row& row);
  /// Runs work that brings a message to a journal state. When the connection is lost meanwhile, it is opened again.
  /// Then, and after a deadlock, the work is done once more, unless the journal has the state: the server had done it,
  /// and only its answer was lost.
  void ThroughLoss(const Row& row, Channel channel, JournalState to, const std::function<void()>& work);
  /// Records "sending".
  /// \return why the message must not go; nothing when it may
  [[nodiscard]] std::optional<Sent> Announce(Row& row, Channel channel);
  [[nodiscard]] std::optional<Sent> AnnounceDry(Row& row, Channel channel);
  void LeaveOut(Row& row, Channel channel, Refusal refusal);
  /// Records the result of a message in one transaction: its record, its journal state and, after the last message of a
  /// row, the mark.
  /// \param reason  of a failure
  template <typename Record>
  void Settle(Row& row, Channel channel, Sent sent, const QString& reason, Record record);
  [[nodiscard]] bool ReadingCancelled() const;
  void TellTakenOver();
  void LogWithdrawn(const Row& row);
  [[nodiscard]] bool IsLastMessage(const Row& row, Channel channel) const;
  void Mark(Row& row);
  void Count(Row& row, Channel channel, Sent sent);
  /// Whether this run tries to send a message that a row asks for, judged by the journal at its start.
  [[nodiscard]] bool WillTry(qint64 recordId, const JournalEntry& entry, Channel channel, const QString& mobile) const;
  /// Whether a delivered message is sent again: the user wants that, and the failed message of the row is tried now.
  [[nodiscard]] bool Repeats(Channel channel) const;
  /// Pauses a channel whose server is unavailable, unless the user decides otherwise.
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
  DueRows due_;  ///< as of the start of the run
  MessageMaker messages_;
  int cancellations_;  // of the user, before the run
  Recordset rows_;
  CounterValues counters_;
  int done_ = 0;
  ChannelState texts_;
  ChannelState emails_;
  MailshotSummary& summary_;
};

}  // namespace qbx
