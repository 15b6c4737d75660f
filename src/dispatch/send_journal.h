// What went out, written down before it goes.

#pragma once

#include <QHash>
#include <QString>

#include "database/connection.h"
#include "database/procedure.h"

namespace qbx {

enum class Channel : int { kSms = 1, kEmail = 2 };

/// State of one message of a row, as stored.
enum class JournalState : int { kNone = -1, kSending = 0, kSent = 1, kFailed = 2 };

/// Both messages of a row.
struct JournalEntry {
  JournalState sms = JournalState::kNone;
  JournalState email = JournalState::kNone;

  /// A message was being sent when the run ended, so nobody knows whether it went out.
  [[nodiscard]] bool InDoubt() const { return Any(JournalState::kSending); }
  [[nodiscard]] bool Any(JournalState state) const { return sms == state || email == state; }
};

/// The send journal of a campaign, in the host database.
///
/// Before a message goes out its state "sending" is committed; afterwards "sent" or "failed" is written in one
/// transaction with whatever else belongs to it. A message left at "sending" is in doubt and no run touches its row
/// until a person settles it. Calls throw DatabaseError.
class SendJournal {
 public:
  SendJournal(Connection& connection, QString user);

  /// Reads all entries of a campaign.
  [[nodiscard]] QHash<qint64, JournalEntry> Read(int campaignId);
  /// \return false when "sending" was refused: the campaign does not hold the row any more, or it was processed meanwhile
  /// at another desk. The message must not go out then.
  [[nodiscard]] bool Write(qint64 recordId, int campaignId, Channel channel, JournalState state);
  /// Forgets a message, which is due again then.
  void Forget(qint64 recordId, Channel channel);

 private:
  QString user_;
  Procedure read_;
  Procedure write_;
  Procedure forget_;
};

}  // namespace qbx
