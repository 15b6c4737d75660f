// Whether the rows of a campaign may be replaced by a new query, or deleted with it.

#pragma once

#include <optional>

#include "database/connection.h"
#include "diagnostics/diagnostics.h"
#include "platform/host_info.h"

namespace qbx {

/// Replacing the rows deletes what is on record about their messages, so it looks first at who is sending them and what went out.
class ReplaceGuard {
 public:
  ReplaceGuard(Connection& connection, const HostInfo& host, Diagnostics diagnostics);

  struct Finding {
    std::optional<Message> refusal = {};  ///< somebody else is sending the campaign, or it could not be told
    bool messagesOnRecord = false;        ///< messages went out, or may have gone out
  };
  /// Never throws. After a refusal what went out was not looked at.
  [[nodiscard]] Finding Look(int campaignId);
  /// The refusal alone, without reading what went out: for a change of single rows, and for deleting the campaign. Never throws.
  [[nodiscard]] std::optional<Message> LookAtClaim(int campaignId);

 private:
  Connection& connection_;
  const HostInfo& host_;
  Diagnostics diagnostics_;
};

}  // namespace qbx
