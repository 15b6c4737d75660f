// Settling messages of which nobody knew whether they went out.

#pragma once

#include <optional>
#include <set>

#include "dispatch/replace_guard.h"

namespace qbx {

/// What a person found out about messages in doubt.
enum class DoubtOutcome {
  kSent,     ///< they arrived: they count as sent, and a row with nothing left to send as processed
  kNotSent,  ///< they did not: they are due again; another message of the row that was delivered stays on record
};

struct DoubtSettlement {
  std::optional<Message> refusal = {};  ///< a run sends the campaign, or it could not be told; nothing was settled
  int messages = 0;                     ///< settled ones
  std::set<qint64> notInDoubt = {};     ///< of the rows asked for, those with nothing in doubt
};

/// Settles the messages of a campaign that are in doubt, in one transaction. A run that sends the campaign has messages on their way, so nothing is settled beside it.
/// \param rows  record IDs; empty: all rows of the campaign. Those with nothing in doubt are passed over and told.
/// \throws DatabaseError
[[nodiscard]] DoubtSettlement SettleDoubt(Connection& connection, ReplaceGuard& guard, const QString& user,
                                          int campaignId, const std::set<qint64>& rows, DoubtOutcome outcome);

}  // namespace qbx
