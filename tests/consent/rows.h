// The rows of a campaign in the model.

#pragma once

#include "consent/merging.h"
#include "consent/selection.h"
#include "dispatch/send_journal.h"

namespace qbx::consent {

/// One message of a row: its text or its e-mail.
struct Half {
  bool wanted = false;     ///< the row's send flag
  bool delivered = false;  ///< the program knows that the last one arrived; a person can revoke that
  int arrived = 0;         ///< how often it arrived since it last became due
  bool permit = false;     ///< the user agreed to send it again
  bool mayDoubt = false;   ///< an answer was lost, or a process ended while it was on its way
  bool attempted = false;  ///< a server got it in the present run
  bool refused = false;    ///< a server refused it the last time
};

/// The letter of a row.
struct Post {
  bool delivered = false;  ///< noted as sent
  int arrived = 0;         ///< how often it was printed or saved since it last became due
  bool permit = false;     ///< it may go again: the user agreed, or the program ended before it noted it
};

/// Whether a message of a row may go after a new look at the customer's consent.
enum class Verdict {
  kMust,  ///< nothing forbids it
  kMustNot,
};

/// The state of a message when it was announced.
struct Announcement {
  Verdict verdict = Verdict::kMustNot;
  bool wanted = false;
};

struct Row {
  qint64 record = 0;
  int customer = 0;
  QString vehicle;
  FieldValues values;
  QString mobile, email, address;
  // The consent when the row was selected.
  Number consent, canSms, canEmail, canLetter;
  bool marketing = true;

  Half sms, mail;
  bool letter = false;
  Post post;
  bool processed = false;
  bool gone = false;       ///< it was deleted
  bool doubt = false;      ///< a message was in doubt when the last run ended
  bool due = false;        ///< at the start of the present run
  bool disturbed = false;  ///< it or its customer was changed since the present run began

  std::optional<std::array<Announcement, 2>> announced;  ///< text and e-mail; nothing: none is under way

  [[nodiscard]] Half& Of(Channel channel) { return channel == Channel::kSms ? sms : mail; }
  [[nodiscard]] const Half& Of(Channel channel) const { return channel == Channel::kSms ? sms : mail; }
  [[nodiscard]] QString Name() const {
    return QStringLiteral("row %1 (customer %2%3)")
        .arg(record)
        .arg(customer)
        .arg(vehicle.isEmpty() ? QString() : u' ' + vehicle);
  }
};

[[nodiscard]] inline QString NameOf(Channel channel) {
  return channel == Channel::kSms ? QStringLiteral("text") : QStringLiteral("e-mail");
}

/// The row that a query must select, with the present consent.
[[nodiscard]] Row MakeRow(const Picked& picked);

[[nodiscard]] Verdict AskAgain(const Row& row, Channel channel, const World& world);

/// Applies send methods to the flags.
void ApplyMethods(std::vector<Row>& rows, const SendMethods& methods, const Settings& settings);

}  // namespace qbx::consent
