#include "dispatch/campaign_claim.h"

#include "util/text.h"

namespace qbx {

CampaignClaim::CampaignClaim(Connection& connection, const HostInfo& host, const Clock& clock, QString user)
    : connection_(connection),
      host_(host),
      clock_(clock),
      user_(std::move(user)),
      read_(connection, "proc_selp_Campaign_Claim"),
      take_(connection, "proc_addp_Campaign_Claim"),
      renew_(connection, "proc_updp_Campaign_Claim_Seen"),
      release_(connection, "proc_delp_Campaign_Claim") {}

CampaignClaim::~CampaignClaim() {
  if (!campaignId_ || !connection_.IsOpen()) return;
  try {
    release_.Execute(
        {{"@CampaignID", *campaignId_}, {"@ProcessID", host_.ProcessId()}, {"@Computer", host_.ComputerName()}});
  } catch (const DatabaseError&) {
    // The claim becomes void with this process.
  }
}

bool CampaignClaim::OnThisComputer(const Recordset& claim) const {
  return EqualsNoCase(claim.Field(QStringLiteral("Computer")).ToText(), host_.ComputerName());
}

bool CampaignClaim::Alive(const Recordset& claim) const {
  if (OnThisComputer(claim)) {
    const qint64 start = host_.ProcessStart(claim.Field(QStringLiteral("ProcessID")).ToInt());
    return start != 0 && start == claim.Field(QStringLiteral("ProcessStart")).ToInt();
  }
  const QDateTime seen = claim.Field(QStringLiteral("LastSeen")).ToDateTime();
  return seen.isValid() && seen.secsTo(clock_.Now()) < kSilence * 60;
}

std::optional<ClaimHolder> CampaignClaim::HeldBy(int campaignId) {
  Recordset claim = read_.Open({{"@CampaignID", campaignId}});
  claim.MoveFirst();
  if (claim.Eof() || !Alive(claim)) return std::nullopt;
  return ClaimHolder{claim.Field(QStringLiteral("UserID")).ToText(), claim.Field(QStringLiteral("Computer")).ToText(),
                     claim.Field(QStringLiteral("ProcessID")).ToInt()};
}

std::optional<ClaimHolder> CampaignClaim::Take(int campaignId) {
  // Looking and taking are one step: the transaction holds the write lock from its start.
  Transaction transaction(connection_.Driver());
  if (std::optional<ClaimHolder> holder = HeldBy(campaignId)) return holder;
  take_.Execute({{"@CampaignID", campaignId},
                 {"@UserID", user_},
                 {"@Computer", host_.ComputerName()},
                 {"@ProcessID", host_.ProcessId()},
                 {"@ProcessStart", host_.ProcessStart(host_.ProcessId())}});
  transaction.Commit();
  campaignId_ = campaignId;
  renewed_ = clock_.Now();
  return std::nullopt;
}

bool CampaignClaim::IsOurs(const Recordset& claim) const {
  return claim.Field(QStringLiteral("ProcessID")).ToInt() == host_.ProcessId() && OnThisComputer(claim);
}

bool CampaignClaim::Renew() {
  if (!campaignId_ || renewed_.secsTo(clock_.Now()) < kRenewSeconds) return true;
  Transaction transaction(connection_.Driver());
  Recordset claim = read_.Open({{"@CampaignID", *campaignId_}});
  claim.MoveFirst();
  if (claim.Eof() || !IsOurs(claim)) return false;
  renew_.Execute({{"@CampaignID", *campaignId_}});
  transaction.Commit();
  renewed_ = clock_.Now();
  return true;
}

}  // namespace qbx
