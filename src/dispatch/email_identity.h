// Who an e-mail says it is from.

#pragma once

#include <QString>

#include "network/mime_message.h"
#include "settings/options.h"

namespace qbx {

/// The addresses of every e-mail beside the customer's own.
struct EmailIdentity {
  MailAddress from;
  QString replyTo;
  QString copyTo;  ///< gets a blind copy of each; empty: nobody does
};

/// As e-mails really go out. A full sender in `SMTP_FromEmail` ("Name <address>") goes before `Reminder_From_Name` and `Reminder_From_Email`: many
/// servers take mail from no other.
[[nodiscard]] EmailIdentity MakeEmailIdentity(const Options& options);

/// "From Hartley Motors <office@example.com>, replies to <...>, a copy of each to <...>." Replies to the sender itself are not named.
[[nodiscard]] QString IdentityText(const EmailIdentity& identity);

}  // namespace qbx
