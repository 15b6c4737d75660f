// Names of this computer and its processes.

#pragma once

#include <QString>

namespace qbx {

/// The real one is in system_host_info.h.
class HostInfo {
 public:
  virtual ~HostInfo() = default;
  /// The DNS host name in upper case.
  [[nodiscard]] virtual QString ComputerName() const = 0;
  [[nodiscard]] virtual qint64 ProcessId() const = 0;
  /// The start time of a process of this computer, in the system's own ticks; 0 when there is no such process. Process
  /// numbers are used again, so only number and start time together identify a process.
  [[nodiscard]] virtual qint64 ProcessStart(qint64 processId) const = 0;
};

}  // namespace qbx
