// Names of the real computer.

#pragma once

#include "platform/host_info.h"

namespace qbx {

class SystemHostInfo final : public HostInfo {
 public:
  /// The first part of the canonical host name, in upper case.
  [[nodiscard]] QString ComputerName() const override;
  [[nodiscard]] qint64 ProcessId() const override;
  [[nodiscard]] qint64 ProcessStart(qint64 processId) const override;
};

}  // namespace qbx
