#include "settings/registry_values.h"

#include <algorithm>
#include <array>

namespace qbx {
namespace {

constexpr int kSmallestHeight = 1200;  // twips

/// The whole numbers of a text that lists exactly `count` of them, separated by ",".
template <size_t count>
std::optional<std::array<int, count>> SplitNumbers(const QString& text) {
  const QStringList parts = text.split(QLatin1Char(','));
  if (parts.size() != static_cast<qsizetype>(count)) return std::nullopt;
  std::array<int, count> numbers = {};
  for (size_t i = 0; i < count; ++i) {
    bool ok = false;
    numbers[i] = parts[static_cast<qsizetype>(i)].trimmed().toInt(&ok);
    if (!ok) return std::nullopt;
  }
  return numbers;
}

/// The name of a list column's value; columns count from 01.
QString ViewName(int column) {
  return QStringLiteral("View%1").arg(column + 1, 2, 10, QLatin1Char('0'));
}

}  // namespace

QString FormatWindowPosition(const WindowPosition& position) {
  return QStringLiteral("%1, %2, %3, %4").arg(position.top).arg(position.left).arg(position.width).arg(position.height);
}

std::optional<WindowPosition> ParseWindowPosition(const QString& text) {
  const auto numbers = SplitNumbers<4>(text);
  if (!numbers) return std::nullopt;
  const auto [top, left, width, height] = *numbers;
  return WindowPosition{std::max(top, 0), left, width, std::max(height, kSmallestHeight)};
}

RegistryValues::RegistryValues(RegistryServices services, const StartupValues& startup)
    : services_(services), startup_(startup) {}

QString RegistryValues::KeyPath(const QString& section, bool perUser, const QString& baseKey) const {
  const QString base = baseKey.isEmpty() ? startup_.ProductKey : baseKey;
  return perUser ? base + startup_.user + QLatin1Char('\\') + section : base + section;
}

bool RegistryValues::Write(RegistryHive hive, const QString& path, const QString& valueName, const QString& value) {
  if (startup_.debug) {
    services_.diagnostics.log.WriteLog(QStringLiteral("SaveReg Local folder: ") + path + QStringLiteral(", Key: ") +
                                       valueName + QStringLiteral(", Val: ") + value);
  }
  CRegistry registry(services_);
  registry.root = hive;
  registry.key = path;
  registry.AutoCreate = true;
  return registry.SetValue(valueName, value);
}

bool RegistryValues::sysSaveValueToRegistry(const QString& section, const QString& valueName, const QString& value,
                                            bool perUser, const QString& baseKey) {
  return Write(RegistryHive::kCurrentUser, KeyPath(section, perUser, baseKey), valueName, value);
}

bool RegistryValues::SaveValueToLocalMachine(const QString& section, const QString& valueName, const QString& value) {
  return Write(RegistryHive::kLocalMachine, KeyPath(section, false, {}), valueName, value);
}

QString RegistryValues::sysLoadValueFromRegistry(const QString& section, const QString& valueName,
                                                 const RegistryRead& how) {
  CRegistry registry(services_);
  registry.root = how.machineHive ? RegistryHive::kLocalMachine : RegistryHive::kCurrentUser;
  registry.key = KeyPath(section, how.perUser, how.baseKey);
  // A value that was never stored is no failure, even when its key is missing.
  QString value = registry.IsMissing() ? QString() : registry.GetValue(valueName);
  if (value.isEmpty()) value = how.defaultValue;
  return value.isEmpty() && how.emptyAsFalse ? QStringLiteral("False") : value;
}

QString RegistryValues::sysLoadValueFromLocalMachine(const QString& section, const QString& valueName,
                                                     const QString& defaultValue, const QString& baseKey) {
  return sysLoadValueFromRegistry(section, valueName,
                                  {.baseKey = baseKey, .machineHive = true, .defaultValue = defaultValue});
}

void RegistryValues::SaveWindowPosition(const QString& form, const WindowPosition& position,
                                        bool minimisedOrMaximised) {
  if (minimisedOrMaximised) return;
  sysSaveValueToRegistry(form, QStringLiteral("WinPos"), FormatWindowPosition(position), true);
}

std::optional<WindowPosition> RegistryValues::LoadWindowPosition(const QString& form) {
  return ParseWindowPosition(sysLoadValueFromRegistry(form, QStringLiteral("WinPos"), {.perUser = true}));
}

void RegistryValues::sysSaveListViewPos(const QString& list, const std::vector<ListViewColumn>& columns) {
  for (size_t i = 0; i < columns.size(); ++i) {
    const QString text = QStringLiteral("%1, %2").arg(columns[i].position).arg(columns[i].width);
    if (!sysSaveValueToRegistry(list, ViewName(static_cast<int>(i)), text, true)) return;
  }
}

std::optional<std::vector<ListViewColumn>> RegistryValues::sysLoadListViewPos(const QString& list, int columnCount) {
  std::vector<ListViewColumn> columns;
  std::vector<bool> taken(static_cast<size_t>(columnCount), false);
  for (int i = 0; i < columnCount; ++i) {
    const auto numbers = SplitNumbers<2>(sysLoadValueFromRegistry(list, ViewName(i), {.perUser = true}));
    if (!numbers) return std::nullopt;
    const auto [position, width] = *numbers;
    if (position < 0 || position >= columnCount || width < 0 || taken[static_cast<size_t>(position)])
      return std::nullopt;
    taken[static_cast<size_t>(position)] = true;
    columns.push_back({position, width});
  }
  return columns;
}

}  // namespace qbx
