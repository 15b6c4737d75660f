#include "dispatch/test_messages.h"

#include "util/text.h"

namespace qbx {

void TestMessages::SendTestEmail(const QString& subject, const QString& body) {
  if (options_.Reminder_From_Email.isEmpty() || options_.Reminder_From_Name.isEmpty()) {
    return Tell(QStringLiteral(
        "EMail Send Settings have not been configured on the E-Reminder Send Settings Tab.\r\rYou need to configure these settings to identify yourself when sending emails."));
  }
  const QString address = TrimBlanks(
      diagnostics_.ui.InputBox({.prompt = QStringLiteral("Enter the email address to send the test message to:"),
                                .title = QStringLiteral("Send Test Email")}));
  if (address.isEmpty() || !Confirm(QStringLiteral("Continue and send a test email to: ") + address)) return;
  if (TrimBlanks(options_.Reminder_From_Email).isEmpty()) {
    return Tell(
        QStringLiteral(
            "E-Mails cannot be sent because your Email address has not been specified on the QBX System Settings screen / E-Reminders Tab."),
        MessageIcon::kExclamation);
  }
  diagnostics_.ui.SetBusy(true);
  const EmailResult result = email_.SendEmailMessage(address, subject, body);
  diagnostics_.ui.SetBusy(false);
  Tell(
      result.sent
          ? QStringLiteral("Test Email has been sent.")
          : QStringLiteral(
                "Test Email could not be sent. Please check Internet Connection is active or Send Settings are configured correctly.\r\rAdditional Information: ") +
                lastError_.LastEmailError);
}

void TestMessages::SendTestText(const QString& message) {
  const QString& sender = options_.Reminder_From_SMS;
  const QString mobile = TrimBlanks(diagnostics_.ui.InputBox(
      {.prompt = QStringLiteral("Enter your mobile phone number to send the test SMS message to:"),
       .title = QStringLiteral("Send Test SMS from ") + sender}));
  if (mobile.isEmpty() ||
      !Confirm(
          QStringLiteral(
              "Continue and send a test SMS Message to: %1\r\rThe recipient will see the message as being sent from: %2")
              .arg(mobile, sender)))
    return;
  diagnostics_.ui.SetBusy(true);
  const bool sent = gateway_.SendTestSMS(sender, options_.SMS_ClientID, options_.SMS_ClientPassword, mobile, message);
  diagnostics_.ui.SetBusy(false);
  Tell(
      sent
          ? QStringLiteral("Test SMS Text Message has been sent.")
          : QStringLiteral(
                "Test SMS Text Message could not be sent. Please check Internet Connection is active or Send Settings are configured correctly."));
}

bool TestMessages::Confirm(const QString& text) {
  return diagnostics_.ui.ShowMessage(
             {.text = text, .icon = MessageIcon::kQuestion, .buttons = MessageButtons::kYesNo}) == MessageAnswer::kYes;
}

void TestMessages::Tell(const QString& text, MessageIcon icon) {
  diagnostics_.ui.ShowMessage({.text = text, .icon = icon});
}

}  // namespace qbx
