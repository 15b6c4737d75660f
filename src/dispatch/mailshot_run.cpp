#include "dispatch/mailshot_run.h"

#include "database/server_errors.h"
#include "dispatch/result_rows.h"
#include "platform/event_breaks.h"
#include "results/merge_row.h"
#include "results/mobile_number.h"

namespace qbx {

MailshotRun::MailshotRun(const MailshotServices& services, MailshotObserver& observer, CampaignClaim& claim,
                         const MailshotPlan& plan, const MailshotTemplates& templates, MailshotSummary& summary)
    : services_(services),
      observer_(observer),
      claim_(claim),
      plan_(plan),
      dryRun_(plan.mode == MailshotMode::kDryRun),
      journal_(services.statements.Shared(), services.user),
      refusals_(services.statements.Shared()),
      messages_(templates),
      cancellations_(services.statements.Cancellations()),
      counters_(services.counters.Values()),
      summary_(summary) {
  texts_.open = plan.sendTexts;
}

bool MailshotRun::ReadRows() {
  due_ = {journal_.Read(plan_.campaignId), refusals_.OfCampaign(plan_.campaignId)};
  if (services_.statements.dbOpenRecLong(rows_, SelectMailshotRows(plan_.campaignId))) return false;
  const int record = rows_.ColumnIndex(QStringLiteral("RecordID"));
  const int sendSms = rows_.ColumnIndex(QStringLiteral("Send_SMS"));
  const int sendEmail = rows_.ColumnIndex(QStringLiteral("Send_Email"));
  const int mobile = rows_.ColumnIndex(QStringLiteral("Mobile"));
  EventBreaks breaks(services_.diagnostics.ui);
  for (rows_.MoveFirst(); !rows_.Eof(); rows_.MoveNext(), breaks.MayPause()) {
    const bool wantsSms = rows_.Field(sendSms).ToBool();
    const bool wantsEmail = rows_.Field(sendEmail).ToBool();
    const qint64 id = rows_.Field(record).ToInt();
    const JournalEntry entry = due_.Entry(id, wantsSms, wantsEmail);
    const QString number = rows_.Field(mobile).ToText();
    texts_.left += wantsSms && WillTry(id, entry, Channel::kSms, number) ? 1 : 0;
    emails_.left += wantsEmail && WillTry(id, entry, Channel::kEmail, number) ? 1 : 0;
  }
  rows_.MoveFirst();
  return true;
}

void MailshotRun::Run() {
  summary_.end = MailshotEnd::kFailed;
  if (!ReadRows()) return;
  const int total = counters_.sms + counters_.emails - counters_.smsSent - counters_.emailsSent;
  observer_.Begins(!due_.entries.isEmpty() || counters_.Sent() > 0);
  observer_.Progress(0, total);
  summary_.end = MailshotEnd::kFinished;
  // The user may have pressed "Pause Sending" while the rows were read.
  for (; !rows_.Eof() && !services_.state.StopSending; rows_.MoveNext()) {
    if (!dryRun_ && !claim_.Renew()) {
      TellTakenOver();
      return;
    }
    Row row = CurrentRow();
    observer_.At(MailshotPoint::kRowStarted, row.recordId);
    SendRow(row);
    texts_.left -= row.wantsSms && WillTry(row.recordId, row.journal, Channel::kSms, row.mobile) ? 1 : 0;
    emails_.left -= row.wantsEmail && WillTry(row.recordId, row.journal, Channel::kEmail, row.mobile) ? 1 : 0;
    observer_.Progress(done_, total);
    observer_.At(MailshotPoint::kRowFinished, row.recordId);
    services_.diagnostics.ui.PumpEvents();
    if (services_.state.StopSending || AllThatIsLeftIsPaused()) break;
    if (CreditsUsedUp()) {
      services_.resultsLog.LogProcessResult(QStringLiteral("Finished because not enough SMS credits are remaining."));
      summary_.end = MailshotEnd::kOutOfCredits;
      break;
    }
    if (dryRun_) continue;
    services_.counters.UpdateCounters(plan_.campaignId);
    counters_ = services_.counters.Values();
    if (ReadingCancelled()) services_.state.StopSending = true;
  }
  // A run that was stopped has not counted its last row yet.
  if (!dryRun_ && !ReadingCancelled()) services_.counters.UpdateCounters(plan_.campaignId);
  if (services_.state.StopSending || texts_.paused || emails_.paused) summary_.end = MailshotEnd::kPaused;
}

/// Whether the user cancelled the counting, which happens between two rows.
bool MailshotRun::ReadingCancelled() const {
  return services_.statements.Cancellations() != cancellations_;
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
  row.journal = due_.entries.value(row.recordId);
  return row;
}

void MailshotRun::SendRow(Row& row) {
  row.journal = row.journal.Wanted(row.wantsSms, row.wantsEmail);
  if (row.journal.InDoubt()) {
    ++summary_.inDoubt;
    return;
  }
  if (row.wantsSms) SendText(row);
  if (row.wantsEmail) SendEmail(row);
  const bool complete = !row.failed && !row.unfinished;
  if (complete && !row.marked && !dryRun_) Mark(row);
}

bool MailshotRun::WillTry(qint64 recordId, const JournalEntry& entry, Channel channel, const QString& mobile) const {
  return due_.WillTry(recordId, entry, channel, mobile, plan_.repeatDelivered);
}

bool MailshotRun::Repeats(Channel channel) const {
  return plan_.repeatDelivered && (channel == Channel::kSms ? emails_ : texts_).open;
}

void MailshotRun::SendText(Row& row) {
  if (row.journal.IsDue(Channel::kSms, Repeats(Channel::kSms))) {
    if (!texts_.open) {
      row.unfinished = true;
      return;
    }
    // A number that is too short is no failure when the row is sent an e-mail instead.
    if (row.mobile.size() >= kShortestMobile || !row.wantsEmail) Count(row, Channel::kSms, SendSMSToMobile(row));
  }
  ++counters_.smsSent;
  ++done_;
}

void MailshotRun::SendEmail(Row& row) {
  if (row.journal.IsDue(Channel::kEmail, Repeats(Channel::kEmail))) {
    if (!emails_.open) {
      row.unfinished = true;
      return;
    }
    Count(row, Channel::kEmail, ProcessEmail(row));
  }
  ++counters_.emailsSent;
  ++done_;
}

void MailshotRun::Count(Row& row, Channel channel, Sent sent) {
  const bool isText = channel == Channel::kSms;
  switch (sent) {
    case Sent::kYes:
      ++(isText ? summary_.smsSent : summary_.emailSent);
      break;
    case Sent::kNo:
      ++(isText ? summary_.smsFailed : summary_.emailFailed);
      row.failed = true;
      observer_.Failed(channel);
      break;
    case Sent::kUncertain:
      if (!row.inDoubt) ++summary_.inDoubt;
      row.inDoubt = true;
      row.unfinished = true;
      break;
    case Sent::kLeftOut:
      row.unfinished = true;
      break;
    case Sent::kWithdrawn:
      if (!row.withdrawn) LogWithdrawn(row);
      row.withdrawn = true;
      row.unfinished = true;
      break;
  }
}

MailshotRun::Sent MailshotRun::SendSMSToMobile(Row& row) {
  const std::optional<QString> mobile =
      row.mobile.size() >= kShortestMobile ? CleanMobileNumber(row.mobile) : std::nullopt;
  if (dryRun_) return AnnounceDry(row, Channel::kSms).value_or(mobile ? Sent::kYes : Sent::kNo);
  const QString text = messages_.Sms(row.values, services_.diagnostics.clock.Today());
  if (const std::optional<Sent> refused = Announce(row, Channel::kSms)) return *refused;
  if (!mobile) {
    Settle(row, Channel::kSms, Sent::kNo, QStringLiteral("The mobile number is missing or too short."), [] {});
    return Sent::kNo;
  }
  const SmsResult result = services_.gateway.SendSMS(row.customer, *mobile, text);
  observer_.At(MailshotPoint::kAfterSend, row.recordId);
  const Sent sent = result.accepted ? Sent::kYes : result.uncertain ? Sent::kUncertain : Sent::kNo;
  Settle(row, Channel::kSms, sent, result.failure, [&] {
    if (result.answered) services_.gateway.RecordSMS(row.customer, *mobile, text, 0, result.messageId);
  });
  NoteServer(Channel::kSms, result.sign, result.failure);
  return sent;
}

MailshotRun::Sent MailshotRun::ProcessEmail(Row& row) {
  const QDate today = services_.diagnostics.clock.Today();
  const QString subject = messages_.Subject(row.values, today);
  const QString body = messages_.Body(row.values, today);
  if (dryRun_) {
    const bool canGo = services_.email.Problem(row.email, subject, body).isEmpty();
    return AnnounceDry(row, Channel::kEmail).value_or(canGo ? Sent::kYes : Sent::kNo);
  }
  if (const std::optional<Sent> refused = Announce(row, Channel::kEmail)) return *refused;
  const EmailResult result = services_.email.SendEmailMessage(row.email, subject, body);
  observer_.At(MailshotPoint::kAfterSend, row.recordId);
  const Sent sent = result.sent ? Sent::kYes : result.uncertain ? Sent::kUncertain : Sent::kNo;
  Settle(row, Channel::kEmail, sent, services_.lastError.LastEmailError, [&] {
    if (result.sent) services_.email.RecordEmail(row.customer, row.email, subject, body);
  });
  if (!result.copyRefused.isEmpty()) services_.resultsLog.LogProcessResult(result.copyRefused);
  if (!result.sent) {
    services_.resultsLog.LogProcessResult(QStringLiteral("Email Failed to: ") + row.customer + QStringLiteral(", ") +
                                          row.email);
    services_.resultsLog.LogProcessResult(QStringLiteral("Failed Reason: ") + services_.lastError.LastEmailError);
  }
  NoteServer(Channel::kEmail, result.sign, services_.lastError.LastEmailError);
  return sent;
}

void MailshotRun::NoteServer(Channel channel, ServerSign sign, const QString& failure) {
  ChannelState& state = StateOf(channel);
  if (!state.server.Note(sign) || services_.state.StopSending) return;
  if (services_.diagnostics.ui.ShowMessage(GoOnQuestion(channel, failure)) == MessageAnswer::kYes) return;
  state.open = false;
  state.paused = true;
  services_.resultsLog.LogProcessResult(
      channel == Channel::kSms ? QStringLiteral("Texts are paused: the SMS gateway failed three times in a row.")
                               : QStringLiteral("E-mails are paused: the mail server failed three times in a row."));
}

bool MailshotRun::AllThatIsLeftIsPaused() const {
  const bool more = (texts_.open && texts_.left > 0) || (emails_.open && emails_.left > 0);
  return (texts_.paused || emails_.paused) && !more;
}

void MailshotRun::LogWithdrawn(const Row& row) {
  services_.resultsLog.LogProcessResult(QStringLiteral("Not sent to: ") + row.customer +
                                        QStringLiteral(". The row was deleted, processed or changed meanwhile."));
}

void MailshotRun::ThroughLoss(const Row& row, Channel channel, JournalState to, const std::function<void()>& work) {
  Connection& connection = services_.statements.Shared();
  const WaitForServer wait = services_.statements.BeginWaiting(MayCancel::kNo);
  try {
    return work();
  } catch (const DatabaseError& error) {
    const bool mayTryAgain = IsDeadlock(error) || connection.ReopenIfLost();
    if (!mayTryAgain || !claim_.IsFresh()) throw;
  }
  // Nobody else writes these entries: this run holds the campaign.
  if (journal_.Read(plan_.campaignId).value(row.recordId).Of(channel) != to) work();
}

std::optional<MailshotRun::Sent> MailshotRun::Announce(Row& row, Channel channel) {
  observer_.At(MailshotPoint::kBeforeJournal, row.recordId);
  bool begun = true;
  ThroughLoss(row, channel, JournalState::kSending, [&] {
    begun = row.journal.Of(channel) == JournalState::kSent
                ? journal_.BeginAgain(row.recordId, plan_.campaignId, channel)
                : journal_.Write(row.recordId, plan_.campaignId, channel, JournalState::kSending);
  });
  if (begun) {
    observer_.At(MailshotPoint::kAfterJournal, row.recordId);
    return std::nullopt;
  }
  const Refusal refusal = refusals_.OfRow(row.recordId).value_or(RowRefusals()).Of(channel);
  if (refusal == Refusal::kNone) return Sent::kWithdrawn;
  LeaveOut(row, channel, refusal);
  return Sent::kLeftOut;
}

std::optional<MailshotRun::Sent> MailshotRun::AnnounceDry(Row& row, Channel channel) {
  const Refusal refusal = due_.refused.value(row.recordId).Of(channel);
  if (refusal == Refusal::kNone) return std::nullopt;
  LeaveOut(row, channel, refusal);
  return Sent::kLeftOut;
}

void MailshotRun::LeaveOut(Row& row, Channel channel, Refusal refusal) {
  const QString reason = RefusalText(refusal, channel);
  if (row.leftOut.isEmpty()) ++summary_.leftOut;
  if (row.leftOut != reason)
    services_.resultsLog.LogProcessResult(QStringLiteral("Left out: ") + row.customer + QStringLiteral(". ") + reason);
  row.leftOut = reason;
}

template <typename Record>
void MailshotRun::Settle(Row& row, Channel channel, Sent sent, const QString& reason, Record record) {
  if (sent == Sent::kUncertain) return;  // it stays at "sending"
  const JournalState state = sent == Sent::kYes ? JournalState::kSent : JournalState::kFailed;
  ThroughLoss(row, channel, state, [&] {
    const Statements::Telling quiet(services_.statements, Statements::Tells::kNothingBridged);
    Transaction transaction(services_.statements.Shared());
    record();
    // A row that was deleted while its message was being sent no longer has a journal.
    (void)journal_.Write(row.recordId, plan_.campaignId, channel, state, sent == Sent::kYes ? QString() : reason);
    if (sent == Sent::kYes && IsLastMessage(row, channel) && !row.failed && !row.unfinished) Mark(row);
    observer_.At(MailshotPoint::kBeforeCommit, row.recordId);
    transaction.Commit();
  });
  observer_.At(MailshotPoint::kAfterCommit, row.recordId);
}

bool MailshotRun::IsLastMessage(const Row& row, Channel channel) const {
  return channel == Channel::kEmail || !row.wantsEmail || !row.journal.IsDue(Channel::kEmail, Repeats(Channel::kEmail));
}

void MailshotRun::Mark(Row& row) {
  // A failure is reported when the transaction has ended. The journal keeps what went out, so the next run only marks
  // the row.
  services_.statements.dbExecute(QStringLiteral("UPDATE [Campaign Results] SET Processed = 1 WHERE RecordID = ") +
                                 QString::number(row.recordId));
  row.marked = true;
}

bool MailshotRun::CreditsUsedUp() const {
  // A run with no text left needs no credits.
  if (dryRun_ || !texts_.open || texts_.left < 1) return false;
  const int outstanding = counters_.sms + counters_.emails - counters_.smsSent - counters_.emailsSent;
  return services_.state.SMSCreditsRemaining < 1 && counters_.sms >= 1 && done_ < outstanding;
}

}  // namespace qbx
