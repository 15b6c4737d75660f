// The messages of a campaign that need a person.

#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

#include "dispatch/send_journal.h"

namespace qbx {

/// A message in doubt, or one that failed in a row which is not processed.
struct SendTrouble {
  qint64 recordId = 0;
  Channel channel = Channel::kSms;
  bool inDoubt = false;  ///< true: it is unknown whether it went out; false: it failed
  QString customer;      ///< the account
  QString contact;
  QString to;      ///< mobile number or e-mail address of the row
  QString reason;  ///< why it failed; empty in doubt, and when an older version of the program sent it
  QDateTime changed;
};

/// The troubles of a campaign in the order of its rows.
/// \throws DatabaseError
[[nodiscard]] QList<SendTrouble> ReadSendTroubles(Connection& connection, int campaignId);

}  // namespace qbx
