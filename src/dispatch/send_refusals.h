// Consent, checked again right before a message goes.

#pragma once

#include <QHash>
#include <QString>
#include <optional>

#include "database/connection.h"
#include "database/procedure.h"
#include "dispatch/send_journal.h"

namespace qbx {

/// Why a message must no longer go; the numbers are those of the host's view `Send_Refusals`.
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

/// The refusals of a row's messages.
struct RowRefusals {
  Refusal sms = Refusal::kNone;
  Refusal email = Refusal::kNone;
  Refusal letter = Refusal::kNone;

  [[nodiscard]] Refusal Of(Channel channel) const {
    return channel == Channel::kSms ? sms : channel == Channel::kEmail ? email : letter;
  }
};

/// Reads which customers' answers are stricter now than when their rows were selected. The send journal refuses
/// messages to them; this gives the reason. Calls throw DatabaseError.
class SendRefusals {
 public:
  /// The refusals in rows that the host returned, by key of the row.
  [[nodiscard]] static QHash<qint64, RowRefusals> Refusals(Recordset rows);

  explicit SendRefusals(Connection& connection);

  /// \return nothing when the row is gone
  [[nodiscard]] std::optional<RowRefusals> OfRow(qint64 recordId);
  /// The refusals of a campaign's rows, by key; rows without one are missing.
  [[nodiscard]] QHash<qint64, RowRefusals> OfCampaign(int campaignId);

 private:
  Procedure row_;
  Procedure campaign_;
};

}  // namespace qbx
