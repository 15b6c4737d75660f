#include "dispatch/settle_doubt.h"

#include <algorithm>
#include <iterator>

#include "database/procedure.h"
#include "dispatch/send_troubles.h"

namespace qbx {

DoubtSettlement SettleDoubt(Connection& connection, ReplaceGuard& guard, const QString& user, int campaignId,
                            const std::set<qint64>& rows, DoubtOutcome outcome) {
  DoubtSettlement settlement;
  // The transaction holds the write lock from its start, so no run can claim the campaign meanwhile.
  Transaction transaction(connection);
  settlement.refusal = guard.LookAtClaim(campaignId);
  if (settlement.refusal) return settlement;
  std::set<qint64> settled;
  for (const SendTrouble& trouble : ReadSendTroubles(connection, campaignId)) {
    if (!trouble.inDoubt || (!rows.empty() && !rows.contains(trouble.recordId))) continue;
    settled.insert(trouble.recordId);
    ++settlement.messages;
  }
  std::set_difference(rows.begin(), rows.end(), settled.begin(), settled.end(),
                      std::inserter(settlement.notInDoubt, settlement.notInDoubt.end()));
  if (rows.empty()) settled = {0};
  Procedure settle(connection, "proc_updp_Send_Journal_Doubt");
  for (const qint64 row : settled) {
    settle.Execute({{"@CampaignID", campaignId},
                    {"@RecordID", row},
                    {"@Sent", outcome == DoubtOutcome::kSent},
                    {"@UserID", user}});
  }
  transaction.Commit();
  return settlement;
}

}  // namespace qbx
