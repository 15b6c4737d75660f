// Keeping two runs of one campaign apart.

#pragma once

#include <QString>
#include <optional>

#include "database/procedure.h"
#include "platform/clock.h"
#include "platform/host_info.h"

namespace qbx {

/// Who holds a campaign.
struct ClaimHolder {
  QString user;
  QString computer;
  qint64 processId = 0;
};

/// The claim of a run on its campaign, a row of the host database. It is given back when this object goes.
///
/// A claim of this very process is its own and holds nobody up. One whose process is gone is void: on this computer the process is looked up (number and start time), on another
/// one it is void when it was not renewed for `kSilence` minutes. Calls throw DatabaseError, except the destructor.
class CampaignClaim {
 public:
  static constexpr int kSilence = 15;       ///< minutes without a renewal after which another computer's claim is void
  static constexpr int kRenewSeconds = 60;  ///< how often a run renews

  CampaignClaim(Connection& connection, const HostInfo& host, const Clock& clock, QString user);
  ~CampaignClaim();
  CampaignClaim(const CampaignClaim&) = delete;
  CampaignClaim& operator=(const CampaignClaim&) = delete;

  /// Takes the campaign, or says who holds it.
  [[nodiscard]] std::optional<ClaimHolder> Take(int campaignId);
  /// Whoever else holds the campaign now, without taking it.
  [[nodiscard]] std::optional<ClaimHolder> HeldBy(int campaignId);
  /// Renews the claim when it is time to.
  /// \return false when the claim is another one's by now: the run must end
  [[nodiscard]] bool Renew();

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
