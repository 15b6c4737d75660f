// Names of this computer and its processes.

#pragma once

#include <QString>

namespace qbx {

/// The real one: see system_host_info.h.
class HostInfo {
 public:
  virtual ~HostInfo() = default;
  /// DNS host name in upper case.
  [[nodiscard]] virtual QString ComputerName() const = 0;
  [[nodiscard]] virtual qint64 ProcessId() const = 0;
  /// When that process of this computer was started, in the system's own ticks; 0 when there is no such process. With
  /// the number it names a process for good, since numbers are used again.
  [[nodiscard]] virtual qint64 ProcessStart(qint64 processId) const = 0;
};

}  // namespace qbx
