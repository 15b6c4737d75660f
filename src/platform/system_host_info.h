// Names of the real computer.

#pragma once

#include "platform/host_info.h"

namespace qbx {

class SystemHostInfo final : public HostInfo {
 public:
  /// The host name up to its first dot, in upper case. No look-up on the network, so it works without a network.
  [[nodiscard]] QString ComputerName() const override;
  [[nodiscard]] qint64 ProcessId() const override;
  [[nodiscard]] qint64 ProcessStart(qint64 processId) const override;
};

}  // namespace qbx
