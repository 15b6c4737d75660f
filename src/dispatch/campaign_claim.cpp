#include "dispatch/campaign_claim.h"

#include "platform/process_alive.h"

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
    // The claim becomes void when this process ends.
  }
}

bool CampaignClaim::Alive(const Recordset& claim) const {
  if (claim.Field(QStringLiteral("Computer")).ToText().compare(host_.ComputerName(), Qt::CaseInsensitive) == 0) {
    // A process has one run at a time, so a claim of this process is one that could not be given back.
    return RunsBeside(host_, claim.Field(QStringLiteral("ProcessID")).ToInt(),
                      claim.Field(QStringLiteral("ProcessStart")).ToInt());
  }
  // The database compares two times of its own clock. This computer's clock may be in another time zone.
  const Value silent = claim.Field(QStringLiteral("Silent"));
  return !silent.IsNull() && silent.ToInt() < qint64{kSilence} * 60;
}

std::optional<ClaimHolder> CampaignClaim::HeldBy(int campaignId) {
  Recordset claim = read_.Open({{"@CampaignID", campaignId}});
  claim.MoveFirst();
  if (claim.Eof() || !Alive(claim)) return std::nullopt;
  return ClaimHolder{claim.Field(QStringLiteral("UserID")).ToText(), claim.Field(QStringLiteral("Computer")).ToText(),
                     claim.Field(QStringLiteral("ProcessID")).ToInt()};
}

std::optional<ClaimHolder> CampaignClaim::Take(int campaignId) {
  // Nobody takes the campaign between looking and taking. The program's own database has one writer at a time; on a
  // server the look holds the claim until the transaction ends.
  Transaction transaction(connection_);
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

bool CampaignClaim::Renew() {
  if (!campaignId_ || renewed_.secsTo(clock_.Now()) < kRenewSeconds) return true;
  const Recordset mine = renew_.Open({{"@CampaignID", *campaignId_},
                                      {"@Computer", host_.ComputerName()},
                                      {"@ProcessID", host_.ProcessId()},
                                      {"@ProcessStart", QString::number(host_.ProcessStart(host_.ProcessId()))}});
  renewed_ = clock_.Now();
  return mine.RecordCount() > 0;
}

}  // namespace qbx
