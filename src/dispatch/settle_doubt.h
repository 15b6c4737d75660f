// Settling messages in doubt.

#pragma once

#include <optional>
#include <set>

#include "dispatch/replace_guard.h"

namespace qbx {

/// What a person found out about messages in doubt.
enum class DoubtOutcome {
  kSent,     ///< they arrived: they count as sent, and a row with nothing left to send as processed
  kNotSent,  ///< they did not arrive: they are due again; a delivered message of the same row stays recorded
};

struct DoubtSettlement {
  /// A run is sending the campaign, or that could not be found out; nothing was settled.
  std::optional<Message> refusal = {};
  int messages = 0;                  ///< number of messages settled
  std::set<qint64> notInDoubt = {};  ///< which of the given rows have nothing in doubt
};

/// Settles the messages of a campaign that are in doubt, in one transaction. Refused while a run sends the campaign,
/// because its current messages look the same.
/// \param rows  record IDs; empty for all rows of the campaign. Rows with nothing in doubt are skipped and returned.
/// \throws DatabaseError
[[nodiscard]] DoubtSettlement SettleDoubt(Connection& connection, ReplaceGuard& guard, const QString& user,
                                          int campaignId, const std::set<qint64>& rows, DoubtOutcome outcome);

}  // namespace qbx
