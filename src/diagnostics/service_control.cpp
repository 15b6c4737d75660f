#include "diagnostics/service_control.h"

#include <stdexcept>

namespace qbx {

bool ServiceControl::ServiceExists(const QString& service) {
  if (!services_.Available()) {
    log_.WriteLog(QStringLiteral("Service Exists - could not open Service Control Manager"));
    return false;
  }
  return services_.Exists(service);
}

bool ServiceControl::ServiceExists2(const QString& service) {
  QString error;
  const std::optional<bool> found = services_.FindByListing(service, &error);
  if (!found) log_.WriteLog(QLatin1String("Error in ServiceExists2: ") + error);
  return found.value_or(false);
}

bool ServiceControl::ServiceStartStop(const QString& service, int action) {
  if (action < static_cast<int>(ServiceAction::kStart) || action > static_cast<int>(ServiceAction::kContinue))
    throw std::invalid_argument("a service can be started (0), stopped (1), paused (2) and continued (3)");
  if (!services_.Available()) {
    log_.WriteLog(QStringLiteral("Service Start/Stop - could not open Service Control Manager"));
    return false;
  }
  if (!services_.Exists(service)) {
    log_.WriteLog(QStringLiteral("Service Start/Stop - could not open Service."));
    return false;
  }
  return services_.Request(service, static_cast<ServiceAction>(action));
}

QString ServiceControl::ServiceStatusText(const QString& service) {
  if (!services_.Available()) return {};
  const std::optional<ServiceState> state = services_.State(service);
  if (!state) return {};
  switch (*state) {
    case ServiceState::kStopped:
      return QStringLiteral("Stopped");
    case ServiceState::kStartPending:
      return QStringLiteral("Start Pending");
    case ServiceState::kStopPending:
      return QStringLiteral("Stop Pending");
    case ServiceState::kRunning:
      return QStringLiteral("Running");
    case ServiceState::kContinuePending:
      return QStringLiteral("Coninue Pending");
    case ServiceState::kPausePending:
      return QStringLiteral("Pause Pending");
    case ServiceState::kPaused:
      return QStringLiteral("Paused");
  }
  return {};
}

}  // namespace qbx
