// The rows of a campaign as the model keeps them.

#pragma once

#include "consent/merging.h"
#include "consent/selection.h"
#include "dispatch/send_journal.h"

namespace qbx::consent {

/// One message of a row: its text or its e-mail.
struct Half {
  bool wanted = false;     ///< the row's send flag
  bool delivered = false;  ///< when it went last the program was told that it arrived; a person can take that back
  int arrived = 0;         ///< how often it reached the customer since it was last due anew
  bool permit = false;     ///< the user agreed that it goes once more
  bool mayDoubt = false;   ///< an answer was lost or a process ended with it on its way
  bool attempted = false;  ///< in the present run a server was given it
  bool refused = false;    ///< a server refused it when it was given it last
};

/// The letter of a row.
struct Post {
  bool delivered = false;  ///< noted as sent
  int arrived = 0;         ///< how often it was printed or saved since it was last due anew
  bool permit = false;     ///< it may go once more: the user agreed, or the program ended before it could note it
};

/// Whether a message of a row may go now that its customer was asked again.
enum class Verdict {
  kMust,  ///< nothing stands against it
  kMustNot,
};

/// What was true of a message when it was announced.
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
  // The answers that the row was selected with.
  Number consent, canSms, canEmail, canLetter;
  bool marketing = true;

  Half sms, mail;
  bool letter = false;
  Post post;
  bool processed = false;
  bool gone = false;       ///< somebody deleted it
  bool doubt = false;      ///< nobody knew what became of a message when the last run ended
  bool due = false;        ///< when the present run began
  bool disturbed = false;  ///< somebody changed it, or its customer, since the present run began

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

/// The row that a query has to give, with the answers of now.
[[nodiscard]] Row MakeRow(const Picked& picked);

[[nodiscard]] Verdict AskAgain(const Row& row, Channel channel, const World& world);

/// What send methods make of the flags.
void ApplyMethods(std::vector<Row>& rows, const SendMethods& methods, const Settings& settings);

}  // namespace qbx::consent
