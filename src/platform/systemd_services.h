// Services of a Linux computer.

#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "platform/service_manager.h"

namespace qbx {

/// Asks systemd over the system bus (or the bus named in DBUS_SYSTEM_BUS_ADDRESS). It refuses to start a running
/// service, to stop a stopped one, and to pause any: units cannot be paused.
class SystemdServices final : public ServiceManager {
 public:
  /// Gives the unit of a service. A name such as "MSSQL$GARAGE" cannot be a unit's. Empty when there is no such
  /// service.
  using UnitOf = std::function<QString(const QString& service)>;

  /// The bus is connected at the first call. If that fails, `Available` is false.
  explicit SystemdServices(UnitOf unitOf);
  ~SystemdServices() override;
  SystemdServices(const SystemdServices&) = delete;
  SystemdServices& operator=(const SystemdServices&) = delete;

  [[nodiscard]] bool Available() override;
  [[nodiscard]] bool Exists(const QString& service) override;
  [[nodiscard]] std::optional<bool> FindByListing(const QString& service, QString* error) override;
  [[nodiscard]] bool Request(const QString& service, ServiceAction action) override;
  [[nodiscard]] std::optional<ServiceState> State(const QString& service) override;

 private:
  class Bus;

  [[nodiscard]] Bus& TheBus();

  UnitOf unitOf_;
  std::unique_ptr<Bus> bus_;  ///< null until the first call
};

}  // namespace qbx
