// The messages of a campaign that need a person.

#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

#include "dispatch/send_journal.h"

namespace qbx {

/// A message that is in doubt, or that failed in a row which is not processed.
struct SendTrouble {
  qint64 recordId = 0;
  Channel channel = Channel::kSms;
  bool inDoubt = false;  ///< nobody knows whether it went out; otherwise it failed
  QString customer;      ///< account
  QString contact;
  QString to;      ///< mobile number or e-mail address, as the row has it
  QString reason;  ///< why it failed; empty in doubt, and where an older version of the program sent
  QDateTime changed;
};

/// Reads them in the order of the rows.
/// \throws DatabaseError
[[nodiscard]] QList<SendTrouble> ReadSendTroubles(Connection& connection, int campaignId);

}  // namespace qbx
