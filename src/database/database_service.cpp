#include "database/database_service.h"

#include <algorithm>
#include <optional>

#include "util/text.h"

namespace qbx {

namespace {

struct KnownService {
  const char* name;
  const char* label;
  const char* instance;
};

constexpr KnownService kOwnService = {"mssql$qbx", "QBX ", "QBX"};
constexpr KnownService kStandardService = {"mssqlserver", "", "MSSQLSERVER"};

const QLatin1String kServerKey("SOFTWARE\\Microsoft\\Microsoft SQL Server\\");

/// Asks in two ways. The second counts when the first finds nothing.
bool IsInstalled(ServiceControl& services, const KnownService& service) {
  const QLatin1String name(service.name);
  return services.ServiceExists(name) || services.ServiceExists2(name);
}

std::optional<KnownService> FindInstalled(ServiceControl& services) {
  for (const KnownService& service : {kOwnService, kStandardService}) {
    if (IsInstalled(services, service)) return service;
  }
  return std::nullopt;
}

QString ReadText(RegistryStore& registry, const QString& key, const QString& name) {
  QString error;
  const auto values = registry.Values(RegistryHive::kLocalMachine, key, &error);
  if (!values) return {};
  const auto found = std::find_if(values->begin(), values->end(),
                                  [&name](const RegistryValue& value) { return EqualsNoCase(value.name, name); });
  return found == values->end() ? QString() : found->data;
}

QString TcpPort(RegistryStore& registry, const QString& instance) {
  const QString id = ReadText(registry, kServerKey + QLatin1String("Instance Names\\SQL"), instance);
  const QString key = kServerKey + id + QLatin1String("\\MSSQLServer\\SuperSocketNetLib\\Tcp\\IPAll");
  const QString dynamicPort = ReadText(registry, key, QStringLiteral("TcpDynamicPorts"));
  const bool usable = !dynamicPort.isEmpty() && dynamicPort != QLatin1String("0");
  return usable ? dynamicPort : ReadText(registry, key, QStringLiteral("TcpPort"));
}

}  // namespace

QString FindDatabaseService(ServiceControl& services) {
  return QLatin1String(IsInstalled(services, kOwnService) ? kOwnService.name : kStandardService.name);
}

void ShowDatabaseServiceInfo(ServiceControl& services, RegistryStore& registry, UserInterface& ui) {
  const std::optional<KnownService> service = FindInstalled(services);
  const QString text =
      service ? QLatin1String(service->label) + QLatin1String("Database Service is installed. TCP Port ") +
                    TcpPort(registry, QLatin1String(service->instance)) + QLatin1String("\r\rService Status: ") +
                    services.ServiceStatusText(QLatin1String(service->name))
              : QStringLiteral("Database Service may not be installed or discovery is not possible.");
  ui.ShowMessage({.text = text, .icon = MessageIcon::kInformation, .defaultAnswer = MessageAnswer::kOk});
}

}  // namespace qbx
