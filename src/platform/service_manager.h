// The system's services, as far as the service of the database server needs them.

#pragma once

#include <QString>
#include <optional>

namespace qbx {

enum class ServiceState {
  kStopped = 1,
  kStartPending,
  kStopPending,
  kRunning,
  kContinuePending,
  kPausePending,
  kPaused
};

enum class ServiceAction { kStart = 0, kStop = 1, kPause = 2, kContinue = 3 };

/// The service manager of this computer. `diagnostics/service_control.h` calls it and words the results.
class ServiceManager {
 public:
  virtual ~ServiceManager() = default;

  /// Whether the manager can be reached.
  [[nodiscard]] virtual bool Available() = 0;
  /// \return true or false; nothing when the manager could not be asked (`error` then says why)
  [[nodiscard]] virtual bool Exists(const QString& service) = 0;
  /// Looks for the service in the list of all services. Used when the manager cannot be opened.
  [[nodiscard]] virtual std::optional<bool> FindByListing(const QString& service, QString* error) = 0;
  /// Sends the request without waiting for its effect.
  [[nodiscard]] virtual bool Request(const QString& service, ServiceAction action) = 0;
  [[nodiscard]] virtual std::optional<ServiceState> State(const QString& service) = 0;
};

/// The real one talks to systemd over D-Bus. See systemd_services.h.

}  // namespace qbx
