// Querying, starting and stopping a service of this computer.

#pragma once

#include <QString>

#include "diagnostics/log_file.h"
#include "platform/service_manager.h"

namespace qbx {

/// Asks the service manager and writes one log line for each failure. It shows nothing; the caller decides what to tell
/// the user.
class ServiceControl {
 public:
  ServiceControl(ServiceManager& services, const LogFile& log) : services_(services), log_(log) {}

  /// Whether the service manager knows the service. False, with a log line, when the manager cannot be asked.
  [[nodiscard]] bool ServiceExists(const QString& service);

  /// The same by listing all services, for when the manager cannot be opened.
  [[nodiscard]] bool ServiceExists2(const QString& service);

  /// Sends a request without waiting for its effect.
  /// \param action  0 start, 1 stop, 2 pause, 3 continue
  /// \return whether the request was accepted; false, with a log line, when the manager or the service cannot be opened
  /// \throws std::invalid_argument for any other action
  bool ServiceStartStop(const QString& service, int action);

  /// The state in words ("Running"); empty when it is unknown.
  [[nodiscard]] QString ServiceStatusText(const QString& service);

 private:
  ServiceManager& services_;
  const LogFile& log_;
};

}  // namespace qbx
