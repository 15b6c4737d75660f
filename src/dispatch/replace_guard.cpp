#include "dispatch/replace_guard.h"

#include <algorithm>

#include "database/error_interpretation.h"
#include "database/procedure.h"
#include "dispatch/campaign_claim.h"
#include "dispatch/mailshot_checks.h"
#include "dispatch/send_journal.h"

namespace qbx {

ReplaceGuard::ReplaceGuard(Connection& connection, const HostInfo& host, Diagnostics diagnostics)
    : connection_(connection), host_(host), diagnostics_(diagnostics) {}

ReplaceGuard::Finding ReplaceGuard::Look(int campaignId) {
  Finding finding;
  finding.refusal = LookAtClaim(campaignId);
  if (finding.refusal) return finding;
  try {
    const QHash<qint64, JournalEntry> entries = SendJournal(connection_, {}).Read(campaignId);
    finding.messagesOnRecord = std::any_of(entries.begin(), entries.end(), [](const JournalEntry& entry) {
      return entry.InDoubt() || entry.Any(JournalState::kSent) || entry.letter == JournalState::kSent;
    });
    finding.messagesOnRecord =
        finding.messagesOnRecord ||
        Procedure(connection_, "proc_selp_Letters_In_Doubt").Finds({{"@CampaignID", campaignId}});
  } catch (const DatabaseError& error) {
    finding.refusal = Unknown(error);
  }
  return finding;
}

std::optional<Message> ReplaceGuard::LookAtClaim(int campaignId) {
  try {
    if (connection_.ReopenIfLost()) diagnostics_.log.WriteLog(QStringLiteral("No DB Connection - reconnecting"));
    CampaignClaim claim(connection_, host_, diagnostics_.clock, {});
    if (const std::optional<ClaimHolder> holder = claim.HeldBy(campaignId)) return ClaimedMessage(*holder);
    return std::nullopt;
  } catch (const DatabaseError& error) {
    return Unknown(error);
  }
}

Message ReplaceGuard::Unknown(const DatabaseError& error) const {
  diagnostics_.log.WriteLog(kDatabaseErrorPrefix + error.Description());
  return {
      .text = QStringLiteral("It could not be told whether this campaign is being sent, so nothing was changed.\r\r") +
              error.Description(),
      .icon = MessageIcon::kExclamation};
}

std::optional<Message> ReplaceGuard::LookForCampaign(int campaignId) {
  if (campaignId <= 0) return std::nullopt;  // it has no name yet
  try {
    Procedure campaign(connection_, "proc_selp_Marketing_Campaign");
    if (campaign.Finds({{"@CampaignID", campaignId}})) return std::nullopt;
  } catch (const DatabaseError&) {
    return std::nullopt;
  }
  return Message{
      .text = QStringLiteral(
          "This campaign was deleted at another desk, so nothing was sent.\r\rSave it as a new campaign, and send it then."),
      .icon = MessageIcon::kExclamation};
}

}  // namespace qbx
