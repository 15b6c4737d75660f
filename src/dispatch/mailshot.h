// The mailshot: sending the texts and e-mails of a campaign, row by row.

#pragma once

#include <QString>

#include "database/event_log.h"
#include "database/last_error.h"
#include "database/statements.h"
#include "diagnostics/diagnostics.h"
#include "dispatch/credit_estimate.h"
#include "dispatch/dispatch_state.h"
#include "dispatch/email_sender.h"
#include "dispatch/mailshot_checks.h"
#include "dispatch/mailshot_observer.h"
#include "dispatch/results_log.h"
#include "dispatch/sms_gateway.h"
#include "platform/host_info.h"
#include "results/counters.h"
#include "settings/options.h"
#include "settings/service_settings.h"

namespace qbx {

/// What a mailshot works with. References only; the Application owns the objects.
struct MailshotServices {
  Statements& statements;
  EventLog& events;
  SmsGateway& gateway;
  EmailSender& email;
  ResultsLog& resultsLog;
  Counters& counters;
  CreditEstimate& estimate;
  DispatchState& state;
  const LastError& lastError;
  const Options& options;
  const ServiceSettings& service;
  const HostInfo& host;
  Diagnostics diagnostics;
  QString user;
};

enum class MailshotMode {
  kSend,
  kDryRun,  ///< neither sends nor records, but does everything else
};

enum class MailshotEnd {
  kRefused,      ///< a check failed; the user was told
  kNothingLeft,  ///< all rows were already processed; the user was told
  kFinished,
  kPaused,        ///< by the user, by cancelling queued e-mails after a failure, or because a server is unavailable
  kOutOfCredits,  ///< the remaining texts need more credits
  kFailed,        ///< an unexpected error ended the run; rows processed so far stay processed
};

/// What a run did. Counts messages, except where it says rows.
struct MailshotSummary {
  MailshotEnd end = MailshotEnd::kRefused;
  int smsSent = 0;
  int smsFailed = 0;
  int emailSent = 0;
  int emailFailed = 0;
  /// Rows that were skipped, or put in doubt by this run: it is unknown whether their message went out.
  int inDoubt = 0;
  int leftOut = 0;  ///< rows with a message that was not sent because the customer said no after they were selected
  int deliveredBefore = 0;  ///< customers who had got one message of their row earlier, while the other one failed
  std::optional<CreditNeed> credits = {};  ///< what the texts cost; nothing when no text was due
};

struct MailshotPlan;

/// Sends what the rows of a campaign ask for, and marks each row whose messages all succeeded. Runs one at a time;
/// another run of the same campaign, even on another computer, is refused.
///
/// To resume a run, start it again. What went out is on disk before the next message goes (see SendJournal), so neither
/// a pause nor a crash sends anything twice:
/// - A row that was interrupted continues where it stopped.
/// - When one message of a row failed, only that message is sent, unless the user wants the whole row again.
/// - A row in doubt is skipped until a person settles it.
/// - A customer who said no after the rows were selected is left out.
///
/// A channel whose server is unavailable is paused.
class Mailshot {
 public:
  Mailshot(MailshotServices services, MailshotObserver& observer)
      : services_(std::move(services)), observer_(observer) {}

  /// The command "Send the SMS and Email Mailshots": the checks, the question about credits, then the run.
  /// \param campaignId  may be a temporary one, below 0
  MailshotSummary Send(int campaignId, const MailshotTemplates& templates, MailshotMode mode = MailshotMode::kSend);

  /// The command "Pause Sending": the run stops after its current row.
  void Pause();

 private:
  void ProcessSMSandEmail(int campaignId, const MailshotTemplates& templates, MailshotMode mode,
                          MailshotSummary& summary);
  void ReportBreakdown(const DatabaseError& error);
  [[nodiscard]] bool ReadingCancelled() const;
  enum class Credits { kSendAll, kEmailOnly, kStop };
  [[nodiscard]] bool AskAboutDelivered(int campaignId, MailshotSummary& summary);
  [[nodiscard]] Credits CheckCredits(const MailshotPlan& plan, const QString& smsTemplate, MailshotSummary& summary);
  void Tell(const Message& message) { services_.diagnostics.ui.ShowMessage(message); }

  MailshotServices services_;
  MailshotObserver& observer_;
  int cancellations_ = 0;  // of reads, before the command
};

}  // namespace qbx
