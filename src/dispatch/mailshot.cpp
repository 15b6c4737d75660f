#include "dispatch/mailshot.h"

#include "dispatch/mailshot_run.h"
#include "dispatch/reminders_over.h"
#include "util/text.h"

namespace qbx {

namespace {

constexpr int kRunLocation = 5400;

QString InDoubtLine(int rows, const QString& hint) {
  return QStringLiteral("%1 row(s) are in doubt and were left alone: nobody knows whether their message went out. %2")
      .arg(QString::number(rows), hint)
      .trimmed();
}

QString ClosingLine(MailshotEnd end) {
  switch (end) {
    case MailshotEnd::kPaused:
      return QStringLiteral("Processing has been paused");
    case MailshotEnd::kFailed:
      return QStringLiteral("Processing was broken off");
    default:
      return QStringLiteral("Processing Finished");
  }
}

/// As long as it lives, failures of the transports are shown once, and the mail connection is kept.
class KeptConnections {
 public:
  KeptConnections(SmsGateway& gateway, EmailSender& email) : gateway_(gateway), email_(email) {
    gateway_.BeginRun();
    email_.BeginRun();
  }
  ~KeptConnections() {
    email_.EndRun();
    gateway_.EndRun();
  }
  KeptConnections(const KeptConnections&) = delete;
  KeptConnections& operator=(const KeptConnections&) = delete;

 private:
  SmsGateway& gateway_;
  EmailSender& email_;
};

}  // namespace

void Mailshot::Pause() {
  services_.state.StopSending = true;
  services_.resultsLog.LogProcessResult(QStringLiteral("Pausing Sending"));
}

MailshotSummary Mailshot::Send(int campaignId, const MailshotTemplates& templates, MailshotMode mode) {
  const Statements::Telling once(services_.statements, Statements::Tells::kLossOnce);
  if (mode == MailshotMode::kSend) services_.events.LogMarketingEvent(QStringLiteral("Processing SMS and Emails"));
  if (!MaySend(services_.options, services_.user)) {
    if (mode == MailshotMode::kSend) services_.events.LogMarketingEvent(QStringLiteral("Not a Manager User"));
    Tell(NotManagerMessage());
    return {};
  }
  if (services_.options.ReadFailed) {
    Tell({.text = QString::fromLatin1(kOptionsUnreadText),
          .icon = MessageIcon::kExclamation,
          .reason = Reason::kOptionsUnread});
    return {};
  }
  services_.state.StopSending = false;
  cancellations_ = services_.statements.Cancellations();
  services_.counters.UpdateCounters(campaignId);
  if (services_.statements.Shared().IsAway() || ReadingCancelled())
    return {.end = MailshotEnd::kFailed};  // as the counters have told
  const CounterValues& counters = services_.counters.Values();
  if (const auto refusal = CheckTemplates(counters, templates)) {
    Tell(*refusal);
    return {};
  }
  services_.resultsLog.LogProcessResult(QStringLiteral("Processing ") + QString::number(counters.sms) +
                                        QStringLiteral(" SMS Texts and ") + QString::number(counters.emails) +
                                        QStringLiteral(" Emails"));
  MailshotSummary summary;
  try {
    ProcessSMSandEmail(campaignId, templates, mode, summary);
  } catch (const DatabaseError& error) {
    ReportBreakdown(error);
    summary.end = MailshotEnd::kFailed;
  }
  return summary;
}

void Mailshot::ProcessSMSandEmail(int campaignId, const MailshotTemplates& templates, MailshotMode mode,
                                  MailshotSummary& summary) {
  CampaignClaim claim(services_.statements.Shared(), services_.host, services_.diagnostics.clock, services_.user);
  const std::optional<ClaimHolder> holder =
      mode == MailshotMode::kSend ? claim.Take(campaignId) : claim.HeldBy(campaignId);
  if (holder) {
    Tell(ClaimedMessage(*holder));
    return;
  }
  services_.counters.UpdateCounters(campaignId);
  const CounterValues& counters = services_.counters.Values();
  if (const auto nothingLeft = CheckOutstanding(counters)) {
    Tell(*nothingLeft);
    summary.end = MailshotEnd::kNothingLeft;
    return;
  }
  if (const auto refusal = CheckAccounts(counters, services_.options)) {
    Tell(*refusal);
    return;
  }
  const QString over = RemindersOverText(services_.statements, campaignId, services_.diagnostics.clock.Today());
  if (!over.isEmpty()) services_.resultsLog.LogProcessResult(over);
  if (ReadingCancelled()) {
    summary.end = MailshotEnd::kFailed;
    return;
  }
  MailshotPlan plan{.campaignId = campaignId, .mode = mode};
  plan.repeatDelivered = AskAboutDelivered(campaignId, summary);
  const bool textsOutstanding = counters.sms - counters.smsSent > 0;
  const Credits credits = textsOutstanding ? CheckCredits(plan, templates.sms, summary) : Credits::kSendAll;
  if (credits == Credits::kStop) return;
  plan.sendTexts = credits == Credits::kSendAll;
  const bool emailsOutstanding = counters.emails - counters.emailsSent > 0;
  const std::optional<Message> doubt =
      TemplateQuestion(templates, plan.sendTexts && textsOutstanding, emailsOutstanding);
  if (doubt && services_.diagnostics.ui.ShowMessage(*doubt) != MessageAnswer::kYes) return;

  const KeptConnections kept(services_.gateway, services_.email);
  MailshotRun run(services_, observer_, claim, plan, templates, summary);
  try {
    run.Run();
  } catch (const DatabaseError& error) {
    ReportBreakdown(error);
    summary.end = MailshotEnd::kFailed;
    if (mode == MailshotMode::kSend)
      services_.resultsLog.LogProcessResult(
          QStringLiteral("The database failed. What went out is recorded: send again later, and nothing goes twice."));
  }
  services_.estimate.Invalidate();
  if (summary.inDoubt > 0)
    services_.resultsLog.LogProcessResult(InDoubtLine(summary.inDoubt, observer_.SettleHint(campaignId)));
  services_.resultsLog.LogProcessResult(ClosingLine(summary.end));
}

void Mailshot::ReportBreakdown(const DatabaseError& error) {
  services_.statements.ShowFailure(kRunLocation, QStringLiteral("ProcessSMSandEmail"), error);
}

/// Whether the user cancelled a reading of this command. Then nothing is to be sent.
bool Mailshot::ReadingCancelled() const {
  return services_.statements.Cancellations() != cancellations_;
}

/// \return whether customers who got one message of their row earlier get the whole row again
bool Mailshot::AskAboutDelivered(int campaignId, MailshotSummary& summary) {
  const Recordset count =
      Procedure(services_.statements.Shared(), "proc_selp_Delivered_Before").Open({{"@CampaignID", campaignId}});
  summary.deliveredBefore = count.Eof() ? 0 : static_cast<int>(count.Field(0).ToInt());
  if (summary.deliveredBefore == 0) return false;
  return services_.diagnostics.ui.ShowMessage(DeliveredQuestion(summary.deliveredBefore)) == MessageAnswer::kYes;
}

Mailshot::Credits Mailshot::CheckCredits(const MailshotPlan& plan, const QString& smsTemplate,
                                         MailshotSummary& summary) {
  services_.estimate.Invalidate();  // other desks work on the same rows
  summary.credits = services_.estimate.EstimateSMSCredits(plan.campaignId, smsTemplate, plan.repeatDelivered);
  if (!summary.credits) return Credits::kStop;
  const CreditNeed& need = *summary.credits;
  if (need.toGo == 0)
    return Credits::kSendAll;  // no text is due, so there is nothing to ask and the gateway is not needed
  const SmsGateway::Credits credits = services_.gateway.GetSMSCredits();
  if (!credits.error.isEmpty()) {
    services_.diagnostics.errors.ShowError(kRunLocation, QStringLiteral("ProcessSMSandEmail"), credits.error, false,
                                           Reason::kGatewayAway);
    return Credits::kStop;
  }
  if (credits.balance <= kUnreadableBalance) {
    Tell(CreditsUnknownMessage(services_.service.supportTelephone));
    return Credits::kStop;
  }
  if (need.toGo > credits.balance) {
    const CounterValues& counters = services_.counters.Values();
    const QString line = QStringLiteral("SMS Credits Remaining / Rows to Process: ") + ShortestNumber(credits.balance) +
                         QStringLiteral(" / ") + QString::number(counters.sms - counters.smsSent);
    services_.diagnostics.log.WriteLog(line);
    if (plan.mode == MailshotMode::kSend) services_.events.LogEvent(kEventSms, 0, QStringLiteral("SMS-CREDITS"), line);
    const CreditsRefusal refusal = NotEnoughCredits(credits.balance, need);
    Tell(refusal.message);
    services_.resultsLog.LogProcessResult(refusal.logLine);
    return Credits::kStop;
  }
  switch (services_.diagnostics.ui.ShowMessage(CreditsQuestion(need))) {
    case MessageAnswer::kYes:
      return Credits::kSendAll;
    case MessageAnswer::kNo:
      return Credits::kEmailOnly;
    default:
      return Credits::kStop;
  }
}

}  // namespace qbx
