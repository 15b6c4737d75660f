// Whether the rows of a campaign may be replaced by a new query, or deleted with it.

#pragma once

#include <optional>

#include "database/connection.h"
#include "diagnostics/diagnostics.h"
#include "platform/host_info.h"

namespace qbx {

/// Replacing the rows deletes the journal of their messages. So this looks first whether somebody is sending them, and
/// what went out.
class ReplaceGuard {
 public:
  ReplaceGuard(Connection& connection, const HostInfo& host, Diagnostics diagnostics);

  struct Finding {
    std::optional<Message> refusal = {};  ///< somebody else is sending the campaign, or it could not be found out
    bool messagesOnRecord = false;        ///< whether messages went out or may have gone out
  };
  /// Never throws. After a refusal `messagesOnRecord` is not looked up.
  [[nodiscard]] Finding Look(int campaignId);
  /// Only the refusal: for changing single rows and for deleting the campaign. Never throws.
  [[nodiscard]] std::optional<Message> LookAtClaim(int campaignId);
  /// Refuses to send a campaign that was saved, and that another desk has deleted: nobody could look at the run later.
  /// Never throws; a failure to find out is left to the run.
  [[nodiscard]] std::optional<Message> LookForCampaign(int campaignId);

 private:
  /// Logs the error.
  [[nodiscard]] Message Unknown(const DatabaseError& error) const;

  Connection& connection_;
  const HostInfo& host_;
  Diagnostics diagnostics_;
};

}  // namespace qbx
