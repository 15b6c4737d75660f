// The sender of e-mails.

#pragma once

#include <QString>

#include "network/mime_message.h"
#include "settings/options.h"

namespace qbx {

/// The addresses of every e-mail beside the customer's.
struct EmailIdentity {
  MailAddress from;
  QString replyTo;
  QString copyTo;  ///< gets a blind copy of each e-mail; empty for none
};

/// The identity with which e-mails go out. A full sender in `SMTP_FromEmail` ("Name <address>") overrides
/// `Reminder_From_Name` and `Reminder_From_Email`, because many servers accept mail from no other sender.
[[nodiscard]] EmailIdentity MakeEmailIdentity(const Options& options);

/// The text "From Hartley Motors <office@example.com>, replies to <...>, a copy of each to <...>." A reply address that
/// equals the sender is left out.
[[nodiscard]] QString IdentityText(const EmailIdentity& identity);

}  // namespace qbx
