#include "dispatch/email_sender.h"

#include "util/text.h"

namespace qbx {

namespace {

constexpr int kCustomerAccount = 1;
constexpr int kLongestAccount = 15;
constexpr int kLongestRecipient = 80;
constexpr int kLongestSubject = 60;
constexpr int kLongestAddressPart = 99;

constexpr char kSending[] = "Sending Email...";
constexpr char kUncleanEnd[] =
    "Email should have been sent but the connection to the SMTP server could not be closed cleanly.";

/// Mail servers and filters may name the component that the host product sends with; users are not to be sent there.
constexpr char kComponentName[] = "Chilkat";

/// Line breaks in names and subjects would become headers of their own.
QString OneLine(QString text) {
  text.replace(QLatin1Char('\r'), QLatin1Char(' '));
  text.replace(QLatin1Char('\n'), QLatin1Char(' '));
  return text;
}

bool HasLineBreak(const QString& text) {
  return text.contains(QLatin1Char('\r')) || text.contains(QLatin1Char('\n'));
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

MailAddress EmailSender::ChooseSender() const {
  const auto parse = [](const QString& text) {
    const qsizetype bracket = text.indexOf(QLatin1Char('<'));
    MailAddress sender{text.left(bracket).trimmed(), text.mid(bracket, kLongestAddressPart)};
    sender.address.remove(QLatin1Char('<')).remove(QLatin1Char('>'));
    sender.address = sender.address.trimmed();
    return sender;
  };
  // A full sender in the mail account's own setting goes first: many servers take mail from no other.
  MailAddress sender = options_.SMTP_FromEmail.contains(QLatin1Char('<'))
                           ? parse(options_.SMTP_FromEmail)
                           : MailAddress{options_.Reminder_From_Name, options_.Reminder_From_Email.trimmed()};
  sender.name.remove(QLatin1Char('"'));
  sender.name = OneLine(sender.name);
  return sender;
}

bool EmailSender::UsesQbxServer() const {
  return !service_.mailHost.isEmpty() && EqualsNoCase(options_.SMTP_Server.trimmed(), service_.mailHost.trimmed());
}

MailServer EmailSender::ServerSettings(bool qbxServer) const {
  MailServer server;
  server.host = options_.SMTP_Server.trimmed();
  server.port = static_cast<int>(LeadingInteger(options_.SMTP_Port));
  server.useTls = options_.SMTP_UseSSL;
  server.implicitTls = server.useTls && server.port == service_.implicitTlsPort;
  server.userName = options_.SMTP_UserName;
  server.password = options_.SMTP_Password;
  if (qbxServer && server.userName.trimmed().isEmpty()) server.userName = service_.mailAccount;
  if (qbxServer && server.password.trimmed().isEmpty()) server.password = service_.mailPassword;
  return server;
}

QString EmailSender::BuildEnvelope(const QString& to, const QString& subject, const QString& body,
                                   MailEnvelope& envelope) {
  MailMessage message;
  message.from = ChooseSender();
  message.replyTo = options_.Reminder_From_Email.trimmed();
  if (message.replyTo.isEmpty()) message.replyTo = message.from.address;
  message.subject = OneLine(subject);
  message.body = body;
  message.headers.emplace_back("X-Priority", QStringLiteral("3"));
  for (const QString& part : to.split(QLatin1Char(';'))) {
    const QString address = part.trimmed();
    if (address.isEmpty()) continue;
    if (HasLineBreak(part)) return QStringLiteral("The email address holds a line break: ") + OneLine(part);
    message.to.push_back({{}, address});
    envelope.recipients.append(address);
  }
  if (envelope.recipients.isEmpty()) return QStringLiteral("No Email Address specified.");
  if (options_.Email_Send_BCC && !options_.Email_Send_BCC_Address.trimmed().isEmpty()) {
    envelope.recipients.append(options_.Email_Send_BCC_Address.trimmed());
  }
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
  view_.Open(qbxServer);
  diagnostics_.ui.SetBusy(true);
  diagnostics_.ui.PumpEvents();
  if (qbxServer) CountDown();
  view_.SetStatus(QLatin1String(kSending));

  MailEnvelope envelope;
  QString error = BuildEnvelope(to, subject, body, envelope);
  if (error.isEmpty()) error = Deliver(ServerSettings(qbxServer), envelope, result);
  if (!error.isEmpty()) {
    ReportFailure(error);
    return result;
  }
  if (qbxServer) diagnostics_.ui.Pause(1000);
  view_.SetProgress(QStringLiteral("Send Complete!"));
  diagnostics_.ui.Pause(250);
  diagnostics_.ui.SetBusy(false);
  view_.Close();
  return result;
}

void EmailSender::CountDown() {
  for (int seconds = 2; seconds > 0; --seconds) {
    view_.SetStatus(QStringLiteral("Sending via the QBX Email Server in ") + QString::number(seconds) +
                    QStringLiteral(" secs..."));
    diagnostics_.ui.Pause(1000);
  }
}

QString EmailSender::Deliver(const MailServer& server, const MailEnvelope& envelope, EmailResult& result) {
  const MailResult sent = transport_.Send(server, envelope, [this](int percent) {
    view_.SetProgress(QString::number(percent) + QStringLiteral("% complete"));
    diagnostics_.ui.PumpEvents();
  });
  result.sent = sent.outcome == MailOutcome::kSent;
  result.uncertain = sent.outcome == MailOutcome::kUncertain;
  if (!result.sent)
    return sent.error.isEmpty() ? QStringLiteral("The mail server did not take the message.") : sent.error;
  if (inRun_ || transport_.Close()) return {};
  result.sent = false;
  return QLatin1String(kUncleanEnd);
}

void EmailSender::ReportFailure(QString text) {
  diagnostics_.ui.SetBusy(false);
  text.remove(QLatin1String(kComponentName), Qt::CaseInsensitive);
  lastError_.LastEmailError = text;
  events_.LogEvent(kEventError, 0, QStringLiteral("SendEmail"), text);
  diagnostics_.log.WriteLog(QStringLiteral("SendEmail Failed: ") + text);
  const bool ask = !inRun_ || !failureAsked_;
  failureAsked_ = true;
  if (!ask) {
    view_.Close();
    return;
  }
  const MessageAnswer answer = diagnostics_.ui.ShowMessage(
      {.text = QStringLiteral(
           "QBX could not send email with the current settings. The QBX Mail Server may not be available or your "
           "Internet Provider may not be allowing email traffic with the current Email Sender/Mail Server "
           "settings.\r\rDo you wish to see the error message and cancel any other emails which may be queued to "
           "send?"),
       .icon = MessageIcon::kExclamation,
       .buttons = MessageButtons::kYesNo,
       .question = Question::kCancelQueuedEmails});
  if (answer != MessageAnswer::kYes) {
    view_.Close();
    return;
  }
  view_.ShowFailure(text);
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
    // The e-mail went out all the same, and its row must not look as if that were unknown.
    diagnostics_.log.WriteLog(QStringLiteral("An email that was sent could not be recorded: ") + error.Description());
  }
}

void EmailSender::BeginRun() {
  inRun_ = true;
  failureAsked_ = false;
}

void EmailSender::EndRun() {
  inRun_ = false;
  if (!transport_.Close()) diagnostics_.log.WriteLog(QStringLiteral("SendEmail: ") + QLatin1String(kUncleanEnd));
}

}  // namespace qbx
