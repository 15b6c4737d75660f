// The send journal: each message is recorded before it goes out.

#pragma once

#include <QHash>
#include <QString>

#include "database/connection.h"
#include "database/procedure.h"

namespace qbx {

enum class Channel : int { kSms = 1, kEmail = 2, kLetter = 3 };

/// Stored state of one message of a row.
enum class JournalState : int { kNone = -1, kSending = 0, kSent = 1, kFailed = 2 };

/// The messages of a row.
struct JournalEntry {
  JournalState sms = JournalState::kNone;
  JournalState email = JournalState::kNone;
  JournalState letter = JournalState::kNone;

  /// Whether a text or an e-mail was being sent when the run ended, so that it is unknown whether it went out.
  [[nodiscard]] bool InDoubt() const { return Any(JournalState::kSending); }
  /// Whether the text or the e-mail has this state.
  [[nodiscard]] bool Any(JournalState state) const { return sms == state || email == state; }

  [[nodiscard]] JournalState Of(Channel channel) const { return const_cast<JournalEntry*>(this)->At(channel); }
  [[nodiscard]] JournalState& At(Channel channel) {
    return channel == Channel::kSms ? sms : channel == Channel::kEmail ? email : letter;
  }
  /// Whether a run must send this message. To be asked for a row that asks for the message and is not in doubt.
  /// \param repeatDelivered  whether a delivered message is sent again when the other message of its row failed
  [[nodiscard]] bool IsDue(Channel channel, bool repeatDelivered) const {
    return Of(channel) != JournalState::kSent || (repeatDelivered && Any(JournalState::kFailed));
  }
  /// The entry without messages that the row no longer asks for. They do not count, but stay recorded.
  [[nodiscard]] JournalEntry Wanted(bool wantsSms, bool wantsEmail) const {
    return {wantsSms ? sms : JournalState::kNone, wantsEmail ? email : JournalState::kNone, letter};
  }
};

/// The send journal of a campaign, in the host database.
///
/// Before a message goes out its state "sending" is committed. Afterwards "sent" or "failed" is written in one
/// transaction with everything that belongs to it. A message left at "sending" is in doubt; no run touches its row
/// until a person settles it. Calls throw DatabaseError.
class SendJournal {
 public:
  /// The entries in rows that the host returned for a campaign, by key of the row.
  [[nodiscard]] static QHash<qint64, JournalEntry> Entries(Recordset rows);

  SendJournal(Connection& connection, QString user);

  /// Reads all entries of a campaign.
  [[nodiscard]] QHash<qint64, JournalEntry> Read(int campaignId);
  /// \param reason  of a failure, for the person who looks into it
  /// \return false when "sending" was refused: the campaign no longer has the row, another desk processed it meanwhile,
  ///         or the customer's answer has become stricter (see `SendRefusals`). The message must not go out then.
  [[nodiscard]] bool Write(qint64 recordId, int campaignId, Channel channel, JournalState state,
                           const QString& reason = {});
  /// Records "sending" for a message that went out before. When it is refused, the old state stays.
  [[nodiscard]] bool BeginAgain(qint64 recordId, int campaignId, Channel channel);

 private:
  Connection& connection_;
  QString user_;
  Procedure read_;
  Procedure write_;
  Procedure forget_;
};

}  // namespace qbx
