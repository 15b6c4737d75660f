// Small stand-ins for this computer: its names, its services, its shell, its printers.

#pragma once

#include <QHash>
#include <QStringList>
#include <thread>

#include "platform/host_info.h"
#include "platform/printers.h"
#include "platform/safe_file.h"
#include "platform/service_manager.h"
#include "platform/shell.h"

namespace qbx::test {

/// A computer "WORKSHOP-PC" with the running processes in `processes`. This process is 4711.
class FakeHostInfo final : public HostInfo {
 public:
  QString computerName = "WORKSHOP-PC";
  qint64 processId = 4711;
  QHash<qint64, qint64> processes = {{4711, 1000}};  ///< start times by number

  [[nodiscard]] QString ComputerName() const override { return computerName; }
  [[nodiscard]] qint64 ProcessId() const override { return processId; }
  [[nodiscard]] qint64 ProcessStart(qint64 id) const override { return processes.value(id, 0); }
};

/// Has the services in `states`. Keeps requests as "name:action", without other effects.
class FakeServices final : public ServiceManager {
 public:
  bool available = true;
  bool accept = true;    ///< the result of `Request` for an existing service
  QString listingError;  ///< unless empty: the failure of `FindByListing`
  QHash<QString, ServiceState> states;
  QStringList requests;

  [[nodiscard]] bool Available() override { return available; }
  [[nodiscard]] bool Exists(const QString& service) override { return available && states.contains(service); }
  [[nodiscard]] std::optional<bool> FindByListing(const QString& service, QString* error) override {
    if (listingError.isEmpty()) return states.contains(service);
    *error = listingError;
    return std::nullopt;
  }
  [[nodiscard]] bool Request(const QString& service, ServiceAction action) override {
    requests.append(service + QLatin1Char(':') + QString::number(static_cast<int>(action)));
    return accept && Exists(service);
  }
  [[nodiscard]] std::optional<ServiceState> State(const QString& service) override {
    if (!Exists(service)) return std::nullopt;
    return states.value(service);
  }
};

/// Keeps all requests.
class FakeShell final : public Shell {
 public:
  bool accept = true;
  QStringList opened;
  QStringList commands;

  bool Open(const QString& target) override {
    opened.append(target);
    return accept;
  }
  bool RunHidden(const QString& command) override {
    commands.append(command);
    return accept;
  }
};

/// Printers that keep the bytes of each printed file.
class FakePrinters final : public Printers {
 public:
  struct Printed {
    QString printer;
    PrintJob job;
    QByteArray pdf;
  };
  std::vector<Printer> printers = {
      {.deviceId = "office", .name = "Office", .driver = {}, .port = {}, .isDefault = true},
      {.deviceId = "workshop", .name = "Workshop", .driver = {}, .port = {}}};
  PrinterAbilities abilities = {.bothSides = true, .trays = {"tray-1", "tray-2"}};
  QString problem;
  bool silent = false;  ///< does not answer until it is told to stop
  std::vector<Printed> printed;

  std::vector<Printer> List(const std::stop_token& stop) override {
    while (silent && !stop.stop_requested())
      std::this_thread::yield();
    if (silent) throw PrinterError{};
    return printers;
  }
  PrinterAbilities AbilitiesOf(const QString& deviceId, const std::stop_token&) override {
    return deviceId == "workshop" ? abilities : PrinterAbilities{};
  }
  void Print(const QString& deviceId, const PrintJob& job, const std::stop_token& stop) override {
    static_cast<void>(List(stop));
    if (!problem.isEmpty()) throw PrinterError{problem};
    printed.push_back({deviceId, job, ReadWholeFile(job.file).value_or(QByteArray())});
  }
};

}  // namespace qbx::test
