// Keeping two runs of one campaign apart.

#pragma once

#include <QString>
#include <optional>

#include "database/procedure.h"
#include "platform/clock.h"
#include "platform/host_info.h"

namespace qbx {

/// The run that holds a campaign.
struct ClaimHolder {
  QString user;
  QString computer;
  qint64 processId = 0;
};

/// The claim of a run on its campaign, a row of the host database. The destructor gives it back.
///
/// A process never blocks itself. On this computer a claim is void when its process (number and start time) no longer
/// runs. On another computer it is void when it was not renewed for `kSilence` minutes. Calls throw DatabaseError,
/// except the destructor.
class CampaignClaim {
 public:
  static constexpr int kSilence = 15;       ///< minutes without a renewal after which another computer's claim is void
  static constexpr int kRenewSeconds = 60;  ///< seconds between two renewals

  CampaignClaim(Connection& connection, const HostInfo& host, const Clock& clock, QString user);
  ~CampaignClaim();
  CampaignClaim(const CampaignClaim&) = delete;
  CampaignClaim& operator=(const CampaignClaim&) = delete;

  /// Takes the campaign. \return who holds it already; nothing when it was taken
  [[nodiscard]] std::optional<ClaimHolder> Take(int campaignId);
  /// Who else holds the campaign now.
  [[nodiscard]] std::optional<ClaimHolder> HeldBy(int campaignId);
  /// Renews the claim when it is time to.
  /// \return false when another run holds the campaign by now: this run must end
  [[nodiscard]] bool Renew();
  /// Whether it was renewed so lately that nobody can have taken the campaign over. For when the database cannot be
  /// asked.
  [[nodiscard]] bool IsFresh() const { return renewed_.secsTo(clock_.Now()) < kSilence * 60 / 2; }

 private:
  [[nodiscard]] bool Alive(const Recordset& claim) const;

  Connection& connection_;
  const HostInfo& host_;
  const Clock& clock_;
  QString user_;
  Procedure read_;
  Procedure take_;
  Procedure renew_;
  Procedure release_;
  std::optional<int> campaignId_;
  QDateTime renewed_;
};

}  // namespace qbx
