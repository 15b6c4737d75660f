// Connecting to the host database with the settings in the registry.

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

/// The login settings of this installation, read from the registry and the INI file. It holds passwords in the clear.
struct LoginSettings {
  QString companyCode;
  QString server;
  Login login;
  QString passwordFailure = {};  ///< why the stored password cannot be deciphered, and what to do; empty: it can
  bool settingsVersion2 = false;
  bool overrideAutomaticSettings = false;
  OdbcSettings sqlServer = {};
};

/// Whether the host's newer login defaults apply. `DatabaseSettingsVersion` of the INI file decides when it is above 0:
/// 2 means yes. Otherwise they apply when the program folder holds the host's configuration program.
[[nodiscard]] bool UsesSettingsVersion2(const IniFile& ini, const QString& programFolder);

/// Reads the login settings; a missing one gets its default.
[[nodiscard]] LoginSettings ReadLoginSettings(RegistryValues& registry, const IniFile& ini,
                                              const QString& programFolder, const ServiceSettings& service,
                                              HostCipher& cipher);

/// What connecting works with, by reference.
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

/// The connection of this run to the host database, and what was found out when it was made.
class HostConnection {
 public:
  explicit HostConnection(const HostConnectionParts& parts) : parts_(parts) {}

  /// Reads the login settings and connects; when the database is there, also reads the user's and the company's
  /// options. A failure is shown to the user. The program then goes on without a database, and statements fail without
  /// ending it.
  void GetDatabaseSettings();

  /// Whether the server answered. The connection may be to "master" only: see `Ready`.
  [[nodiscard]] bool Connected() const { return connected_; }
  /// Whether the host database can be used.
  [[nodiscard]] bool Ready() const { return connected_ && flags_.status == DatabaseStatus::kOnline; }
  [[nodiscard]] const ConnectionFlags& Flags() const { return flags_; }
  /// The configured server, shown in the about box.
  [[nodiscard]] const QString& Server() const { return server_; }
  /// The database of this connection. Start-up may change its own database name afterwards.
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
