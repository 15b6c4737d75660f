// The system's services, as far as the database server's own service is concerned.

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

/// The service manager of this computer. `database` reports through it and words the results; see service_control.h in
/// diagnostics.
class ServiceManager {
 public:
  virtual ~ServiceManager() = default;

  /// Whether the manager itself can be asked at all.
  [[nodiscard]] virtual bool Available() = 0;
  /// \return true or false, nothing when the question could not be asked (`error` says why)
  [[nodiscard]] virtual bool Exists(const QString& service) = 0;
  /// The second way to ask: by listing all services. Used when the manager cannot be opened.
  [[nodiscard]] virtual std::optional<bool> FindByListing(const QString& service, QString* error) = 0;
  /// Sends the request without waiting for its effect.
  [[nodiscard]] virtual bool Request(const QString& service, ServiceAction action) = 0;
  [[nodiscard]] virtual std::optional<ServiceState> State(const QString& service) = 0;
};

/// The real one talks to systemd over D-Bus. See systemd_services.h.

}  // namespace qbx
