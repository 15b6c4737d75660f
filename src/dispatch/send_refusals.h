// Consent, asked again right before a message goes.

#pragma once

#include <QHash>
#include <QString>

#include "database/connection.h"
#include "database/procedure.h"
#include "dispatch/send_journal.h"

namespace qbx {

/// Why a message must not go any more, as the host's view `Send_Refusals` numbers it.
enum class Refusal : int {
  kNone = 0,
  kCustomerGone = 1,
  kOptedOut = 2,
  kNotOptedIn = 3,
  kNoMarketing = 4,
  kChannel = 5,  ///< the customer no longer agrees to this channel
};

/// \return a sentence for the results log; empty for kNone
[[nodiscard]] QString RefusalText(Refusal refusal, Channel channel);

/// What is against the messages of a row.
struct RowRefusals {
  Refusal sms = Refusal::kNone;
  Refusal email = Refusal::kNone;
  Refusal letter = Refusal::kNone;

  [[nodiscard]] Refusal Of(Channel channel) const {
    return channel == Channel::kSms ? sms : channel == Channel::kEmail ? email : letter;
  }
};

/// Reads from the host whose answer is stricter now than the one a row was selected with. The send journal refuses the messages of these rows
/// by itself; this says why. Calls throw DatabaseError.
class SendRefusals {
 public:
  /// The refusals in the rows that the host returns, by the key of the row.
  [[nodiscard]] static QHash<qint64, RowRefusals> Refusals(Recordset rows);

  explicit SendRefusals(Connection& connection);

  [[nodiscard]] RowRefusals OfRow(qint64 recordId);
  /// The rows of a campaign that have one.
  [[nodiscard]] QHash<qint64, RowRefusals> OfCampaign(int campaignId);

 private:
  Procedure row_;
  Procedure campaign_;
};

}  // namespace qbx
