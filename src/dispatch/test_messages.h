// Sending a test message to oneself before messages go to customers.

#pragma once

#include <QString>

#include "diagnostics/diagnostics.h"
#include "dispatch/email_sender.h"
#include "dispatch/sms_gateway.h"
#include "settings/options.h"

namespace qbx {

/// The test e-mail and the test text. It asks for the recipient, asks for confirmation, sends the message and shows the
/// result. Nothing is recorded for any customer.
class TestMessages {
 public:
  TestMessages(EmailSender& email, SmsGateway& gateway, const Options& options, const LastError& lastError,
               Diagnostics diagnostics)
      : email_(email), gateway_(gateway), options_(options), lastError_(lastError), diagnostics_(diagnostics) {}

  void SendTestEmail(const QString& subject, const QString& body);
  /// \param message  cut to 918 characters
  void SendTestText(const QString& message);

 private:
  [[nodiscard]] bool Confirm(const QString& text);
  void Tell(const QString& text, MessageIcon icon = MessageIcon::kInformation);

  EmailSender& email_;
  SmsGateway& gateway_;
  const Options& options_;
  const LastError& lastError_;
  Diagnostics diagnostics_;
};

}  // namespace qbx
