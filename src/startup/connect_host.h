// Connecting to the host database with what the registry holds.

#pragma once

#include <QString>

#include "database/connect_database.h"
#include "database/odbc/odbc_driver.h"
#include "platform/host_info.h"
#include "settings/options_loader.h"
#include "settings/registry_values.h"
#include "settings/service_settings.h"
#include "settings/user_options.h"

namespace qbx {

/// The login data of this installation, as read from the registry and the INI file. Holds passwords in the clear.
struct LoginSettings {
  QString companyCode;
  QString server;
  Login login;
  bool settingsVersion2 = false;
  bool overrideAutomaticSettings = false;
  OdbcSettings sqlServer = {};
};

/// Whether the host's newer login defaults apply: `DatabaseSettingsVersion` of the INI file, when above 0, is 2;
/// otherwise whether the host's configuration program stands in the program folder.
[[nodiscard]] bool UsesSettingsVersion2(const IniFile& ini, const QString& programFolder);

/// Reads them; anything missing gets its default.
[[nodiscard]] LoginSettings ReadLoginSettings(RegistryValues& registry, const IniFile& ini,
                                              const QString& programFolder, const ServiceSettings& service,
                                              HostCipher& cipher);

/// What connecting works with. References only.
struct HostConnectionParts {
  StartupValues& startup;
  const IniFile& ini;
  RegistryValues& registry;
  const ServiceSettings& service;
  HostCipher& cipher;
  const HostInfo& host;
  OdbcDriver& sqlServer;
  Connection& connection;
  Statements& statements;
  ServiceControl& services;
  Shell& shell;
  OptionsLoader& options;
  UserOptions& userOptions;
  Diagnostics diagnostics;
};

/// The connection of this run with the host database, and what was found out while making it.
class HostConnection {
 public:
  explicit HostConnection(const HostConnectionParts& parts) : parts_(parts) {}

  /// Reads the login data, connects, and, when the database is there, reads the user's and the company's options. A
  /// failure was shown to the user; the program goes on without a database, and statements fail softly.
  void GetDatabaseSettings();

  /// Whether the server answered. The connection may be with "master" alone: see `Ready`.
  [[nodiscard]] bool Connected() const { return connected_; }
  /// Whether the host database itself can be worked with.
  [[nodiscard]] bool Ready() const { return connected_ && flags_.status == DatabaseStatus::kOnline; }
  [[nodiscard]] const ConnectionFlags& Flags() const { return flags_; }
  /// The configured server, for the about box.
  [[nodiscard]] const QString& Server() const { return server_; }
  /// The database connected to; start-up's database name may change afterwards.
  [[nodiscard]] const QString& DatabaseName() const { return databaseName_; }

 private:
  [[nodiscard]] ConnectSettings SettingsFor(const LoginSettings& login);

  HostConnectionParts parts_;
  bool connected_ = false;
  ConnectionFlags flags_;
  QString server_;
  QString databaseName_;
};

}  // namespace qbx
