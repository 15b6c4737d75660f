#include "dispatch/email_sender.h"

#include <utility>

#include "dispatch/email_identity.h"
#include "dispatch/mailshot_checks.h"
#include "dispatch/recipients.h"
#include "util/text.h"

namespace qbx {

namespace {

constexpr int kCustomerAccount = 1;
constexpr int kLongestAccount = 15;
constexpr int kLongestRecipient = 80;
constexpr int kLongestSubject = 60;

constexpr char kSending[] = "Sending Email...";
constexpr char kUncleanEnd[] =
    "Email should have been sent but the connection to the SMTP server could not be closed cleanly.";

/// Mail servers and filters may name the component with which the host product sends. It is removed, so that users do
/// not turn to its maker.
constexpr char kComponentName[] = "Chilkat";

ServerSign SignOf(const MailResult& result) {
  if (result.unreachable) return ServerSign::kUnreachable;
  return result.transport || result.outcome == MailOutcome::kUncertain ? ServerSign::kUnknown : ServerSign::kServes;
}

}  // namespace

EmailSender::EmailSender(MailTransport& transport, MimeWriter& mime, const Options& options,
                         const ServiceSettings& service, Connection& connection, EventLog& events, DispatchState& state,
                         LastError& lastError, SendEmailView& view, Diagnostics diagnostics)
    : transport_(transport),
      mime_(mime),
      options_(options),
      service_(service),
      events_(events),
      state_(state),
      lastError_(lastError),
      view_(view),
      diagnostics_(diagnostics),
      record_(connection, "proc_addp_Email") {}

bool EmailSender::UsesQbxServer() const {
  return IsHostMailServer(options_, service_);
}

MailServer EmailSender::ServerSettings(bool qbxServer) const {
  MailServer server;
  server.host = TrimBlanks(options_.SMTP_Server);
  server.port = static_cast<int>(LeadingInteger(options_.SMTP_Port));
  server.useTls = options_.SMTP_UseSSL;
  server.implicitTls = server.useTls && server.port == service_.implicitTlsPort;
  server.userName = options_.SMTP_UserName;
  server.password = options_.SMTP_Password;
  if (qbxServer && TrimBlanks(server.userName).isEmpty()) server.userName = service_.mailAccount;
  if (qbxServer && TrimBlanks(server.password).isEmpty()) server.password = service_.mailPassword;
  return server;
}

QString EmailSender::BuildEnvelope(const QString& to, const QString& subject, const QString& body,
                                   MailEnvelope& envelope) {
  MailMessage message;
  const EmailIdentity identity = MakeEmailIdentity(options_);
  message.from = identity.from;
  message.replyTo = identity.replyTo;
  message.subject = OneLine(subject);
  message.body = body;
  message.headers.emplace_back("X-Priority", QStringLiteral("3"));
  const Recipients recipients = RecipientsOf(to);
  if (!recipients.problem.isEmpty()) return recipients.problem;
  for (const QString& address : recipients.addresses)
    message.to.push_back({{}, address});
  envelope.recipients = recipients.addresses;
  if (!identity.copyTo.isEmpty() && identity.copyTo != refusedCopy_) envelope.recipients.append(identity.copyTo);
  envelope.sender = message.from.address;
  MimeResult written = mime_.Write(message);
  envelope.message = std::move(written.bytes);
  return written.error;
}

EmailResult EmailSender::SendEmailMessage(const QString& to, const QString& subject, const QString& body) {
  lastError_.Reset();
  EmailResult result;
  if (to.isEmpty()) {
    lastError_.LastEmailError = QStringLiteral("No Email Address specified.");
    return result;
  }
  const bool qbxServer = UsesQbxServer();
  if (!windowOpen_) view_.Open(qbxServer);
  windowOpen_ = inRun_;
  diagnostics_.ui.SetBusy(true);
  diagnostics_.ui.PumpEvents();
  if (qbxServer && !connected_) CountDown();
  connected_ = inRun_;
  view_.SetStatus(QLatin1String(kSending));

  MailEnvelope envelope;
  Failure failure{Blame::kMessage, BuildEnvelope(to, subject, body, envelope)};
  if (failure.text.isEmpty()) failure = Deliver(ServerSettings(qbxServer), envelope, result);
  if (!failure.text.isEmpty()) {
    ReportFailure(failure);
    return result;
  }
  if (qbxServer && !inRun_) diagnostics_.ui.Pause(1000);
  view_.SetProgress(QStringLiteral("Send Complete!"));
  if (!inRun_) diagnostics_.ui.Pause(250);
  diagnostics_.ui.SetBusy(false);
  if (!inRun_) view_.Close();
  return result;
}

void EmailSender::CountDown() {
  for (int seconds = 2; seconds > 0; --seconds) {
    view_.SetStatus(QStringLiteral("Sending via the QBX Email Server in ") + QString::number(seconds) +
                    QStringLiteral(" secs..."));
    diagnostics_.ui.Pause(1000);
  }
}

MailResult EmailSender::Transmit(const MailServer& server, const MailEnvelope& envelope) {
  return transport_.Send(server, envelope, [this](int percent) {
    view_.SetProgress(QString::number(percent) + QStringLiteral("% complete"));
    diagnostics_.ui.PumpEvents();
  });
}

MailResult EmailSender::TransmitWithoutCopy(const MailServer& server, MailEnvelope envelope, MailResult refused,
                                            EmailResult& result) {
  const QString copy = MakeEmailIdentity(options_).copyTo;
  const bool copyRefused = !copy.isEmpty() && refused.refusedRecipient == copy && envelope.recipients.size() > 1;
  if (!copyRefused || envelope.recipients.last() != copy) return refused;
  result.copyRefused = QStringLiteral("The copy to %1 was left out: %2").arg(copy, refused.error);
  diagnostics_.log.WriteLog(QStringLiteral("SendEmail: ") + result.copyRefused);
  if (inRun_) refusedCopy_ = copy;
  envelope.recipients.removeLast();
  return Transmit(server, envelope);
}

EmailSender::Failure EmailSender::Deliver(const MailServer& server, const MailEnvelope& envelope, EmailResult& result) {
  MailResult sent = Transmit(server, envelope);
  if (sent.outcome == MailOutcome::kRefused) sent = TransmitWithoutCopy(server, envelope, sent, result);
  result.sent = sent.outcome == MailOutcome::kSent;
  result.uncertain = sent.outcome == MailOutcome::kUncertain;
  result.sign = SignOf(sent);
  if (!result.sent) {
    const QString noReason = QStringLiteral("The mail server did not take the message.");
    return {sent.transport ? Blame::kTransport : Blame::kRefusal, sent.error.isEmpty() ? noReason : sent.error};
  }
  if (inRun_ || transport_.Close()) return {};
  result.sent = false;
  return {Blame::kTransport, QLatin1String(kUncleanEnd)};
}

/// In a run the user is asked once about refusals and once about the connection, but never about an invalid address in
/// a row.
bool EmailSender::ShallAsk(Blame blame) {
  if (!inRun_) return true;
  if (blame == Blame::kMessage) return false;
  bool& asked = blame == Blame::kTransport ? transportAsked_ : refusalAsked_;
  return !std::exchange(asked, true);
}

void EmailSender::ReportFailure(Failure failure) {
  diagnostics_.ui.SetBusy(false);
  failure.text.remove(QLatin1String(kComponentName), Qt::CaseInsensitive);
  lastError_.LastEmailError = failure.text;
  events_.LogEvent(kEventError, 0, QStringLiteral("SendEmail"), failure.text);
  diagnostics_.log.WriteLog(QStringLiteral("SendEmail Failed: ") + failure.text);
  if (failure.blame == Blame::kTransport) connected_ = false;
  if (!ShallAsk(failure.blame)) {
    if (!inRun_) view_.Close();
    return;
  }
  const MessageAnswer answer = diagnostics_.ui.ShowMessage(
      {.text = QStringLiteral(
           "QBX could not send email with the current settings. The QBX Mail Server may not be available or your Internet Provider may not be allowing email traffic with the current Email Sender/Mail Server settings.\r\rDo you wish to see the error message and cancel any other emails which may be queued to send?"),
       .icon = MessageIcon::kExclamation,
       .buttons = MessageButtons::kYesNo,
       .question = Question::kCancelQueuedEmails});
  if (answer != MessageAnswer::kYes) {
    if (!inRun_) view_.Close();
    return;
  }
  view_.ShowFailure(failure.text);
  windowOpen_ = false;  // from now on the user closes it
  state_.StopSending = true;
}

void EmailSender::RecordEmail(const QString& customer, const QString& to, const QString& subject, const QString& body) {
  try {
    record_.Execute({{"@AC_Ref", customer.left(kLongestAccount)},
                     {"@AC_Type", kCustomerAccount},
                     {"@Email_To", to.left(kLongestRecipient)},
                     {"@Email_Subject", subject.left(kLongestSubject)},
                     {"@Email_Text", body},
                     {"@Attachments", QString()}});
  } catch (const DatabaseError& error) {
    // The e-mail went out in any case; the record is only a convenience of the host.
    diagnostics_.log.WriteLog(QStringLiteral("The sent e-mail could not be recorded: ") + error.Description());
  }
}

QString EmailSender::Problem(const QString& to, const QString& subject, const QString& body) {
  MailEnvelope envelope;
  return BuildEnvelope(to, subject, body, envelope);
}

void EmailSender::BeginRun() {
  inRun_ = true;
  connected_ = false;
  transportAsked_ = false;
  refusalAsked_ = false;
  refusedCopy_.clear();
}

void EmailSender::EndRun() {
  inRun_ = false;
  connected_ = false;
  if (std::exchange(windowOpen_, false)) view_.Close();
  refusedCopy_.clear();
  if (!transport_.Close()) diagnostics_.log.WriteLog(QStringLiteral("SendEmail: ") + QLatin1String(kUncleanEnd));
}

}  // namespace qbx
