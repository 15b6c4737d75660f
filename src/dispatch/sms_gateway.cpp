#include "dispatch/sms_gateway.h"

#include "dispatch/sms_reply.h"
#include "dispatch/sms_text.h"
#include "dispatch/url_encode.h"
#include "util/text.h"

namespace qbx {

namespace {

constexpr int kSmsTable = 7;
constexpr int kSendLocation = 5210;
constexpr int kServerError = 500;  // RFC 9110, section 15.6

constexpr char kWebPage[] = "The SMS gateway answered with a web page instead of a reply.";

/// The result when the gateway gave no readable reply.
SmsResult NoReply(const HttpReply& reply) {
  SmsResult result;
  result.uncertain = reply.body || reply.inDoubt;
  result.failure = reply.body ? QLatin1String(kWebPage) : reply.error;
  if (reply.body || reply.isHtml || reply.status >= kServerError) {
    result.sign = ServerSign::kErrorPage;
  } else if (reply.status == 0) {
    result.sign = reply.inDoubt ? ServerSign::kUnknown : ServerSign::kUnreachable;
  }
  return result;
}

}  // namespace

SmsGateway::SmsGateway(HttpClient& http, const Options& options, const ServiceSettings& service, Connection& connection,
                       EventLog& events, ResultsLog& resultsLog, DispatchState& state, Diagnostics diagnostics,
                       QString user)
    : http_(http),
      options_(options),
      service_(service),
      events_(events),
      resultsLog_(resultsLog),
      state_(state),
      diagnostics_(diagnostics),
      user_(std::move(user)),
      record_(connection, "proc_addp_SMS") {}

QString SmsGateway::SMSGatewayURL() const {
  QString server = TrimBlanks(options_.SMS_Server);
  server.remove(QStringLiteral("http://"), Qt::CaseInsensitive);
  server.remove(QStringLiteral("https://"), Qt::CaseInsensitive);
  if (server.isEmpty()) return {};
  if (!server.endsWith(QLatin1Char('/'))) server += QLatin1Char('/');
  return QStringLiteral("http://") + server;
}

HttpReply SmsGateway::Get(const QString& url) {
  if (SMSGatewayURL().isEmpty())
    return {.error = QStringLiteral("No SMS gateway is set in the QBX System Settings (option SMS_Server).")};
  return http_.Get(url);
}

SmsGateway::Credits SmsGateway::GetSMSCredits() {
  const HttpReply reply =
      Get(SMSGatewayURL() + QStringLiteral("sms/verifyclient.asp?ClientCode=") + URLEncode(options_.SMS_ClientID) +
          QStringLiteral("&ClientAuth=") + URLEncode(options_.SMS_ClientPassword));
  if (!reply.body || IsWebPage(*reply.body, reply.isHtml, kCreditFields)) return {kUnreadableBalance, reply.error};
  const std::optional<CreditReply> credits = ParseCreditReply(*reply.body);
  if (!credits) return {kUnreadableBalance, {}};
  if (credits->accepted) state_.SMSCreditsRemaining = credits->balance;
  return {credits->balance, {}};
}

QString SmsGateway::SendUrl(const QString& clientId, const QString& password, const QString& mobile,
                            const QString& sender, const QString& message) const {
  QString url = SMSGatewayURL() + QStringLiteral("sms/send_sms.asp?ClientCode=") + URLEncode(clientId) +
                QStringLiteral("&ClientAuth=") + URLEncode(password) + QStringLiteral("&_To=") + URLEncode(mobile) +
                QStringLiteral("&_From=") + URLEncode(sender) + QStringLiteral("&_Message=") + URLEncode(message);
  // The gateway expects the pound sign in UTF-8 and every other character in Windows-1252.
  url.replace(QStringLiteral("%A3"), QStringLiteral("%C2%A3"));
  return url;
}

void SmsGateway::BeginRun() {
  inRun_ = true;
  failureShown_ = false;
}

void SmsGateway::LogRefusal(const QString& customer, const QString& mobile, const QString& reason) {
  resultsLog_.LogProcessResult(QStringLiteral("SMS Failed to: ") + customer + QStringLiteral(", ") + mobile);
  resultsLog_.LogProcessResult(QStringLiteral("Failed Reason: ") + reason);
}

void SmsGateway::ReportTransportFailure(const QString& customer, const QString& mobile, const SmsResult& result) {
  QString reason = result.failure;
  if (result.uncertain) reason += QStringLiteral(" It is not known whether the text went out.");
  if (inRun_) LogRefusal(customer, mobile, reason);
  if (inRun_ && failureShown_) {
    diagnostics_.log.WriteLog(QStringLiteral("ERROR: ") + reason + QStringLiteral(" (in MSend)"));
    return;
  }
  failureShown_ = true;
  diagnostics_.errors.ShowError(kSendLocation, QStringLiteral("MSend"), reason);
}

SmsResult SmsGateway::SendSMS(const QString& customer, const QString& mobile, const QString& message) {
  const HttpReply reply =
      Get(SendUrl(options_.SMS_ClientID, options_.SMS_ClientPassword, mobile, options_.Reminder_From_SMS, message));
  if (!reply.body || IsWebPage(*reply.body, reply.isHtml, kSendFields)) {
    SmsResult result = NoReply(reply);
    ReportTransportFailure(customer, mobile, result);
    return result;
  }
  SmsResult result;
  result.answered = true;
  const std::optional<SmsReply> answer = ParseSmsReply(*reply.body);
  if (!answer) {
    result.accepted = true;
    return result;
  }
  state_.SMSCreditsRemaining = answer->balance;
  if (answer->Accepted()) {
    result.accepted = true;
    result.messageId = answer->messageId;
    return result;
  }
  events_.LogEvent(kEventError, kSmsTable, QString::number(answer->code), QStringLiteral("SENDSMS: Reminder Error"));
  result.failure = SendRefusalReason(answer->code, mobile);
  LogRefusal(customer, mobile, result.failure);
  return result;
}

void SmsGateway::RecordSMS(const QString& customer, const QString& mobile, const QString& message, int status,
                           int messageId) {
  try {
    record_.Execute({{"@Customer", customer},
                     {"@Mobile_Number", mobile},
                     {"@Message", message},
                     {"@Status", status},
                     {"@MessageID", messageId},
                     {"@UserID", user_}});
  } catch (const DatabaseError&) {
    // The text went out in any case; the record is only a convenience of the host.
  }
}

bool SmsGateway::SendTestSMS(const QString& sender, const QString& clientId, const QString& password,
                             const QString& mobile, const QString& message) {
  const HttpReply reply = Get(SendUrl(clientId, password, mobile, sender, SmsText(message)));
  if (!reply.body || IsWebPage(*reply.body, reply.isHtml, kSendFields)) {
    diagnostics_.errors.ShowError(kSendLocation, QStringLiteral("MSend"), NoReply(reply).failure);
    return false;
  }
  const std::optional<SmsReply> answer = ParseSmsReply(*reply.body);
  if (!answer) return false;
  const QString key = QString::number(answer->code);
  if (answer->Accepted()) {
    if (answer->messageId < 1) return false;
    events_.LogEvent(kEventSms, 0, key, QStringLiteral("Test SMS Sent"));
    return true;
  }
  events_.LogEvent(kEventError, kSmsTable, key, QStringLiteral("Send Test SMS Error"));
  diagnostics_.ui.ShowMessage(
      {.text = TestRefusalReason(answer->code) +
               QStringLiteral("\r\rIf you are unsure about this message,\rplease contact QBX on ") +
               service_.supportTelephone + QStringLiteral(" to report this."),
       .icon = MessageIcon::kExclamation});
  return false;
}

}  // namespace qbx
