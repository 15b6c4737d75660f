#include "dispatch/mailshot_run.h"

#include "dispatch/mobile_number.h"
#include "dispatch/result_rows.h"
#include "dispatch/sms_credits.h"
#include "results/merge_row.h"

namespace qbx {

MailshotRun::MailshotRun(const MailshotServices& services, MailshotObserver& observer, CampaignClaim& claim,
                         int campaignId, const MailshotTemplates& templates, MailshotMode mode, bool sendTexts,
                         MailshotSummary& summary)
    : services_(services),
      observer_(observer),
      claim_(claim),
      campaignId_(campaignId),
      dryRun_(mode == MailshotMode::kDryRun),
      sendTexts_(sendTexts),
      journal_(services.statements.Shared(), services.user),
      sms_(templates.sms),
      subject_(templates.emailSubject),
      body_(templates.emailBody),
      today_(services.diagnostics.clock.Today()),
      counters_(services.counters.Values()),
      summary_(summary) {}

bool MailshotRun::ReadRows() {
  entries_ = journal_.Read(campaignId_);
  if (services_.statements.dbOpenRec(rows_, SelectMailshotRows(campaignId_))) return false;
  const int sendSms = rows_.ColumnIndex(QStringLiteral("Send_SMS"));
  for (rows_.MoveFirst(); !rows_.Eof(); rows_.MoveNext())
    textsLeft_ += rows_.Field(sendSms).ToBool() ? 1 : 0;
  rows_.MoveFirst();
  return true;
}

void MailshotRun::Run() {
  summary_.end = MailshotEnd::kFailed;
  if (!ReadRows()) return;
  const int total = counters_.sms + counters_.emails - counters_.smsSent - counters_.emailsSent;
  observer_.Progress(0, total);
  summary_.end = MailshotEnd::kFinished;
  for (; !rows_.Eof(); rows_.MoveNext()) {
    if (!dryRun_ && !claim_.Renew()) {
      TellTakenOver();
      return;
    }
    Row row = CurrentRow();
    observer_.At(MailshotPoint::kRowStarted, row.recordId);
    SendRow(row);
    textsLeft_ -= row.wantsSms ? 1 : 0;
    observer_.Progress(done_, total);
    observer_.At(MailshotPoint::kRowFinished, row.recordId);
    services_.diagnostics.ui.PumpEvents();
    if (services_.state.StopSending) {
      summary_.end = MailshotEnd::kPaused;
      break;
    }
    if (CreditsUsedUp()) {
      services_.resultsLog.LogProcessResult(QStringLiteral("Finished because not enough SMS credits are remaining."));
      summary_.end = MailshotEnd::kOutOfCredits;
      break;
    }
    if (dryRun_) continue;
    services_.counters.UpdateCounters(campaignId_);
    counters_ = services_.counters.Values();
  }
}

void MailshotRun::TellTakenOver() {
  const QString text = QStringLiteral(
      "This run was stopped: the computer was silent for so long that another run took the campaign over.");
  services_.resultsLog.LogProcessResult(text);
  services_.diagnostics.ui.ShowMessage({.text = text, .icon = MessageIcon::kExclamation});
  summary_.end = MailshotEnd::kFailed;
}

MailshotRun::Row MailshotRun::CurrentRow() const {
  Row row;
  row.recordId = rows_.Field(QStringLiteral("RecordID")).ToInt();
  row.wantsSms = rows_.Field(QStringLiteral("Send_SMS")).ToBool();
  row.wantsEmail = rows_.Field(QStringLiteral("Send_Email")).ToBool();
  row.customer = rows_.Field(QStringLiteral("Customer")).ToText();
  row.mobile = rows_.Field(QStringLiteral("Mobile")).ToText();
  row.email = rows_.Field(QStringLiteral("Email")).ToText();
  row.values = MergeRow(rows_, BlankContact::kBecomesCustomer);
  row.journal = entries_.value(row.recordId);
  return row;
}

void MailshotRun::SendRow(Row& row) {
  // What the row no longer asks for plays no part, but stays on record.
  if (!row.wantsSms) row.journal.sms = JournalState::kNone;
  if (!row.wantsEmail) row.journal.email = JournalState::kNone;
  if (row.journal.InDoubt()) {
    ++summary_.inDoubt;
    return;
  }
  if (row.journal.Any(JournalState::kFailed)) ForgetAttempt(row);
  if (row.wantsSms) SendText(row);
  if (row.wantsEmail) SendEmail(row);
  const bool complete = !row.failed && !row.unfinished;
  if (complete && !row.marked && !dryRun_) Mark(row);
}

/// A row in which something failed is tried again whole.
void MailshotRun::ForgetAttempt(Row& row) {
  if (!dryRun_) {
    if (row.wantsSms) journal_.Forget(row.recordId, Channel::kSms);
    if (row.wantsEmail) journal_.Forget(row.recordId, Channel::kEmail);
  }
  row.journal = {};
}

void MailshotRun::SendText(Row& row) {
  if (!sendTexts_) {
    row.unfinished = true;
    return;
  }
  if (row.journal.sms != JournalState::kSent) {
    if (row.mobile.size() >= kShortestMobile) {
      QString text;
      sms_.Merge(row.values, today_, text);
      Count(row, SendSMSToMobile(row, text.left(kMaxSmsLength)), summary_.smsSent, summary_.smsFailed);
    } else if (!row.wantsEmail) {
      Count(row, Sent::kNo, summary_.smsSent, summary_.smsFailed);
    }
  }
  ++counters_.smsSent;
  ++done_;
}

void MailshotRun::SendEmail(Row& row) {
  if (row.journal.email != JournalState::kSent) {
    QString subject;
    QString body;
    subject_.Merge(row.values, today_, subject);
    body_.Merge(row.values, today_, body);
    Count(row, ProcessEmail(row, subject, body), summary_.emailSent, summary_.emailFailed);
  }
  ++counters_.emailsSent;
  ++done_;
}

void MailshotRun::Count(Row& row, Sent sent, int& sentCounter, int& failedCounter) {
  switch (sent) {
    case Sent::kYes:
      ++sentCounter;
      break;
    case Sent::kNo:
      ++failedCounter;
      row.failed = true;
      break;
    case Sent::kUncertain:
      if (!row.inDoubt) ++summary_.inDoubt;
      row.inDoubt = true;
      row.unfinished = true;
      break;
    case Sent::kWithdrawn:
      if (!row.unfinished) LogWithdrawn(row);
      row.unfinished = true;
      break;
  }
}

MailshotRun::Sent MailshotRun::SendSMSToMobile(Row& row, const QString& text) {
  const std::optional<QString> mobile = CleanMobileNumber(row.mobile);
  if (dryRun_) return mobile ? Sent::kYes : Sent::kNo;
  if (!mobile) {
    Settle(row, Channel::kSms, Sent::kNo, [] {});
    return Sent::kNo;
  }
  if (!Announce(row, Channel::kSms)) return Sent::kWithdrawn;
  const SmsResult result = services_.gateway.SendSMS(row.customer, *mobile, text);
  observer_.At(MailshotPoint::kAfterSend, row.recordId);
  const Sent sent = result.accepted ? Sent::kYes : result.uncertain ? Sent::kUncertain : Sent::kNo;
  Settle(row, Channel::kSms, sent, [&] {
    if (result.answered) services_.gateway.RecordSMS(row.customer, *mobile, text, 0, result.messageId);
  });
  return sent;
}

MailshotRun::Sent MailshotRun::ProcessEmail(Row& row, const QString& subject, const QString& body) {
  if (dryRun_) return services_.email.Problem(row.email, subject, body).isEmpty() ? Sent::kYes : Sent::kNo;
  if (!Announce(row, Channel::kEmail)) return Sent::kWithdrawn;
  const EmailResult result = services_.email.SendEmailMessage(row.email, subject, body);
  observer_.At(MailshotPoint::kAfterSend, row.recordId);
  const Sent sent = result.sent ? Sent::kYes : result.uncertain ? Sent::kUncertain : Sent::kNo;
  Settle(row, Channel::kEmail, sent, [&] {
    if (result.sent) services_.email.RecordEmail(row.customer, row.email, subject, body);
  });
  if (!result.sent) {
    services_.resultsLog.LogProcessResult(QStringLiteral("Email Failed to: ") + row.customer + QStringLiteral(", ") +
                                          row.email);
    services_.resultsLog.LogProcessResult(QStringLiteral("Failed Reason: ") + services_.lastError.LastEmailError);
  }
  return sent;
}

void MailshotRun::LogWithdrawn(const Row& row) {
  services_.resultsLog.LogProcessResult(QStringLiteral("Not sent to: ") + row.customer +
                                        QStringLiteral(". The row was deleted, processed or changed meanwhile."));
}

bool MailshotRun::Announce(const Row& row, Channel channel) {
  observer_.At(MailshotPoint::kBeforeJournal, row.recordId);
  if (!journal_.Write(row.recordId, campaignId_, channel, JournalState::kSending)) return false;
  observer_.At(MailshotPoint::kAfterJournal, row.recordId);
  return true;
}

template <typename Record>
void MailshotRun::Settle(Row& row, Channel channel, Sent sent, Record record) {
  if (sent == Sent::kUncertain) return;  // it stays at "sending"
  Transaction transaction(services_.statements.Shared().Driver());
  record();
  // A row that was deleted while its message was on its way has no journal any more.
  (void)journal_.Write(row.recordId, campaignId_, channel,
                       sent == Sent::kYes ? JournalState::kSent : JournalState::kFailed);
  if (sent == Sent::kYes && IsLastMessage(row, channel) && !row.failed && !row.unfinished) Mark(row);
  observer_.At(MailshotPoint::kBeforeCommit, row.recordId);
  transaction.Commit();
  observer_.At(MailshotPoint::kAfterCommit, row.recordId);
}

bool MailshotRun::IsLastMessage(const Row& row, Channel channel) const {
  return channel == Channel::kEmail || !row.wantsEmail || row.journal.email == JournalState::kSent;
}

void MailshotRun::Mark(Row& row) {
  // A mark that fails has been reported; the journal keeps what went out, so the next run only marks the row.
  services_.statements.dbExecute(QStringLiteral("UPDATE [Campaign Results] SET Processed = 1 WHERE RecordID = ") +
                                 QString::number(row.recordId));
  row.marked = true;
}

bool MailshotRun::CreditsUsedUp() const {
  // A run that sends no more texts needs no credits.
  if (dryRun_ || !sendTexts_ || textsLeft_ < 1) return false;
  const int outstanding = counters_.sms + counters_.emails - counters_.smsSent - counters_.emailsSent;
  return services_.state.SMSCreditsRemaining < 1 && counters_.sms >= 1 && done_ < outstanding;
}

}  // namespace qbx
