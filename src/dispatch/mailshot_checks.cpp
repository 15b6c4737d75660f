#include "dispatch/mailshot_checks.h"

#include "dispatch/server_watch.h"
#include "dispatch/template_notes.h"
#include "util/text.h"

namespace qbx {

namespace {

constexpr int kShortestTemplate = 5;

Message Warning(Reason reason, const char* text) {
  return {.text = QString::fromLatin1(text), .icon = MessageIcon::kExclamation, .reason = reason};
}
Message Information(const char* text) {
  return {.text = QString::fromLatin1(text), .icon = MessageIcon::kInformation};
}

/// The question before a run that is probably a mistake.
Message AllTheSame(const QString& text, Question question) {
  return {.text = text,
          .icon = MessageIcon::kExclamation,
          .buttons = MessageButtons::kYesNo,
          .question = question,
          .defaultAnswer = MessageAnswer::kNo};
}

}  // namespace

bool MaySend(const Options& options, const QString& user) {
  return !options.QBX_Internal || EqualsNoCase(user, QStringLiteral("manager"));
}

Message NotManagerMessage() {
  return Warning(Reason::kNotManager, "Need to be logged on as Manager to perform this function.");
}

Message ClaimedMessage(const ClaimHolder& holder) {
  return {.text = QStringLiteral("This campaign is already being sent by ") + holder.user +
                  QStringLiteral(" on computer ") + holder.computer + QStringLiteral(" (process ") +
                  QString::number(holder.processId) +
                  QStringLiteral(").\r\rPlease wait until that run has finished or was paused."),
          .icon = MessageIcon::kExclamation,
          .reason = Reason::kClaimed};
}

std::optional<Message> CheckTemplates(const CounterValues& counters, const MailshotTemplates& templates) {
  if (counters.sms > 0 && templates.sms.trimmed().size() < kShortestTemplate) {
    return Warning(Reason::kNoTemplate,
                   "You haven't entered an SMS Text Message Template on the Letter Templates Tab.");
  }
  if (counters.emails > 0 && templates.emailBody.trimmed().size() < kShortestTemplate) {
    return Warning(Reason::kNoTemplate, "You haven't entered an Email Message Template on the Letter Templates Tab.");
  }
  if (counters.sms + counters.emails == 0) {
    return Information(
        "No SMS or Emails to process. No customers in the results list are selected to receive a SMS Text Message or Email.");
  }
  return std::nullopt;
}

std::optional<Message> TemplateQuestion(const MailshotTemplates& templates, bool texts, bool emails) {
  const bool noSubject = emails && templates.emailSubject.trimmed().isEmpty();
  QStringList unknown;
  if (texts) unknown += UnknownFields(templates.sms);
  if (emails) unknown += UnknownFields(templates.emailSubject) + UnknownFields(templates.emailBody);
  unknown.removeDuplicates();
  QStringList problems;
  if (noSubject) problems += QStringLiteral("The e-mail has no subject.");
  if (!unknown.isEmpty()) problems += UnknownFieldsText(unknown);
  if (problems.isEmpty()) return std::nullopt;
  return AllTheSame(problems.join(QLatin1Char('\r')) + QStringLiteral("\r\rSend all the same?"),
                    noSubject ? Question::kEmptySubject : Question::kUnknownFields);
}

std::optional<Message> LetterQuestion(const QString& letter) {
  const QStringList unknown = UnknownFields(letter);
  if (unknown.isEmpty()) return std::nullopt;
  return AllTheSame(UnknownFieldsText(unknown) + QStringLiteral("\r\rMake the letters all the same?"),
                    Question::kUnknownFields);
}

std::optional<Message> CheckOutstanding(const CounterValues& counters) {
  if (counters.sms + counters.emails != counters.smsSent + counters.emailsSent) return std::nullopt;
  return Information(
      "No results left to process. You can manually untick the Processed flag on the Results Tab if you want to send any particular message again.");
}

std::optional<Message> CheckAccounts(const CounterValues& counters, const Options& options) {
  const bool emailsOutstanding = counters.emails - counters.emailsSent > 0;
  if (emailsOutstanding && TrimBlanks(options.Reminder_From_Email).isEmpty()) {
    return Warning(
        Reason::kNoAccount,
        "E-Mails cannot be sent because your Email address has not been specified on the QBX System Settings screen / E-Reminders Tab.\r\rPlease configure the Email Send Settings or adjust the Send Method to remove Emails and perhaps send SMS or Letters instead.");
  }
  const bool textsOutstanding = counters.sms - counters.smsSent > 0;
  const bool noAccount = TrimBlanks(options.SMS_ClientID).isEmpty() || TrimBlanks(options.SMS_ClientPassword).isEmpty();
  if (textsOutstanding && noAccount) {
    return Warning(
        Reason::kNoAccount,
        "The SMS Account Username or Password have not been set in the QBX System Settings screen / Communications Tab.\r\rPlease configure the SMS Settings or adjust the Send Method to remove SMS and perhaps send Emails or Letters instead.");
  }
  return std::nullopt;
}

bool IsHostMailServer(const Options& options, const ServiceSettings& service) {
  return !service.mailHost.isEmpty() && EqualsNoCase(TrimBlanks(options.SMTP_Server), TrimBlanks(service.mailHost));
}

std::optional<Message> HostMailServerNotice(const Options& options, const ServiceSettings& service) {
  if (!IsHostMailServer(options, service)) return std::nullopt;
  return Message{
      .text = QStringLiteral(
          "Please note that this system is currently configured to use the QBX Email Server. You can configure the system to use your own email account in the QBX System Settings screen on the Communcations Tab.\r\rUsing your own account may bring benefits such as recording the sent emails in your own Outbound or Sent Items list. It should also be quicker to connect and to send emails using your own email provider."),
      .icon = MessageIcon::kInformation};
}

Message CreditsUnknownMessage(const QString& supportTelephone) {
  Message message = Warning(
      Reason::kCreditsUnknown,
      "Unable to determine the amount of SMS Text Message credits available on your account.\r\rThere may be a technical problem with your internet connection, or with the QBX SMS Gateway Server.\r\rPlease call QBX on ");
  message.text += supportTelephone + QStringLiteral(" if you require assistance.");
  return message;
}

Message DeliveredQuestion(int customers) {
  const QString who = customers == 1 ? QStringLiteral("1 customer already got its")
                                     : QStringLiteral("%1 customers already got their").arg(customers);
  return {.text = who + QStringLiteral(" text or e-mail of this campaign; only the other half failed.\r\r") +
                  QStringLiteral("Send them again what they already got?"),
          .icon = MessageIcon::kQuestion,
          .buttons = MessageButtons::kYesNo,
          .question = Question::kRepeatDelivered,
          .defaultAnswer = MessageAnswer::kNo};
}

Message GoOnQuestion(Channel channel, const QString& failure) {
  const QString what = channel == Channel::kSms
                           ? QStringLiteral("The SMS gateway has failed %1 times in a row. The last time: %2")
                           : QStringLiteral("The mail server has failed %1 times in a row. The last time: %2");
  const QString sentence = failure.endsWith(QLatin1Char('.')) ? failure : failure + QLatin1Char('.');
  return {.text = what.arg(ServerWatch::kEnough).arg(sentence) + QStringLiteral("\r\rGo on sending?"),
          .icon = MessageIcon::kExclamation,
          .buttons = MessageButtons::kYesNo,
          .question = Question::kGoOnSending,
          .defaultAnswer = MessageAnswer::kNo};
}

Message CreditsQuestion(const CreditNeed& need) {
  const QString all =
      need.toGo == need.inAll ? QString() : QStringLiteral(" (%1 in all, %2 sent)").arg(need.inAll).arg(need.sent);
  return {.text = QStringLiteral("This campaign is going to use approximately ") + QString::number(need.toGo) +
                  QStringLiteral(" SMS credits") + all +
                  QStringLiteral(".\r\n\r\nWould you like to proceed?\r\nNo: Send Email Only, Cancel: Cancel Sending"),
          .icon = MessageIcon::kQuestion,
          .buttons = MessageButtons::kYesNoCancel,
          .title = QStringLiteral("SMS Credits"),
          .question = Question::kSmsCredits};
}

CreditsRefusal NotEnoughCredits(double credits, const CreditNeed& need) {
  const QString available = ShortestNumber(credits);
  if (credits == 0) {
    return {
        Warning(Reason::kNoCredits,
                "There are no Text Message credits remaining on your account. SMS Text Messages cannot be processed."),
        QStringLiteral("Processing Stopped - no Text Messages available (") + available + QLatin1Char(')')};
  }
  Message message = Warning(
      Reason::kNoCredits,
      "There is not enough Text Message credits on your account to process all SMS message in the results list.\r\r");
  message.text +=
      available + QStringLiteral(" available, but require: ") + QString::number(need.toGo) + InAllText(need);
  return {message,
          QStringLiteral("Processing Stopped - not enough Text Messages available (") + available + QLatin1Char(')')};
}

}  // namespace qbx
