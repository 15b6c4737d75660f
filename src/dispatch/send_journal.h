// What went out, written down before it goes.

#pragma once

#include <QHash>
#include <QString>

#include "database/connection.h"
#include "database/procedure.h"

namespace qbx {

enum class Channel : int { kSms = 1, kEmail = 2, kLetter = 3 };

/// State of one message of a row, as stored.
enum class JournalState : int { kNone = -1, kSending = 0, kSent = 1, kFailed = 2 };

/// The messages of a row.
struct JournalEntry {
  JournalState sms = JournalState::kNone;
  JournalState email = JournalState::kNone;
  JournalState letter = JournalState::kNone;

  /// A text or an e-mail was being sent when the run ended, so nobody knows whether it went out.
  [[nodiscard]] bool InDoubt() const { return Any(JournalState::kSending); }
  /// Of the text or the e-mail.
  [[nodiscard]] bool Any(JournalState state) const { return sms == state || email == state; }

  [[nodiscard]] JournalState Of(Channel channel) const { return const_cast<JournalEntry*>(this)->At(channel); }
  [[nodiscard]] JournalState& At(Channel channel) {
    return channel == Channel::kSms ? sms : channel == Channel::kEmail ? email : letter;
  }
  /// Whether a run has to send this message of a row that asks for it and is not in doubt.
  /// \param repeatDelivered  where one half of a row failed, the half that was delivered goes again
  [[nodiscard]] bool IsDue(Channel channel, bool repeatDelivered) const {
    return Of(channel) != JournalState::kSent || (repeatDelivered && Any(JournalState::kFailed));
  }
  /// The entry without what the row no longer asks for: that plays no part, but stays on record.
  [[nodiscard]] JournalEntry Wanted(bool wantsSms, bool wantsEmail) const {
    return {wantsSms ? sms : JournalState::kNone, wantsEmail ? email : JournalState::kNone, letter};
  }
};

/// The send journal of a campaign, in the host database.
///
/// Before a message goes out its state "sending" is committed; afterwards "sent" or "failed" is written in one
/// transaction with whatever else belongs to it. A message left at "sending" is in doubt and no run touches its row
/// until a person settles it. Calls throw DatabaseError.
class SendJournal {
 public:
  /// The entries in the rows that the host returns for a campaign, by the key of the row.
  [[nodiscard]] static QHash<qint64, JournalEntry> Entries(Recordset rows);

  SendJournal(Connection& connection, QString user);

  /// Reads all entries of a campaign.
  [[nodiscard]] QHash<qint64, JournalEntry> Read(int campaignId);
  /// \param reason  of a failure, for the person who looks into it
  /// \return false when "sending" was refused: the campaign does not hold the row any more, it was processed meanwhile at another desk, or the
  /// customer's answer has become stricter (`SendRefusals` tells). The message must not go out then.
  [[nodiscard]] bool Write(qint64 recordId, int campaignId, Channel channel, JournalState state,
                           const QString& reason = {});
  /// The same for "sending" a message again that went out before. Where it is refused, what is on record stays.
  [[nodiscard]] bool BeginAgain(qint64 recordId, int campaignId, Channel channel);

 private:
  Connection& connection_;
  QString user_;
  Procedure read_;
  Procedure write_;
  Procedure forget_;
};

}  // namespace qbx
