// The services of a Linux computer.

#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "platform/service_manager.h"

namespace qbx {

/// Asks systemd over the system bus (or the bus named in DBUS_SYSTEM_BUS_ADDRESS). Starting what runs and stopping what
/// is stopped is refused, as is every pause: units cannot be paused.
class SystemdServices final : public ServiceManager {
 public:
  /// Gives the unit for a service's name: "MSSQL$GARAGE" cannot be one. Empty: there is no such service.
  using UnitOf = std::function<QString(const QString& service)>;

  /// The bus is connected to when it is first needed, which is seldom; when that fails, `Available` is false.
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
  std::unique_ptr<Bus> bus_;  ///< null: not needed yet
};

}  // namespace qbx
