#include "startup/connect_host.h"

#include "platform/file_names.h"
#include "util/text.h"

namespace qbx {
namespace {

constexpr char kLogin[] = "Login";
constexpr char kFConfig[] = "FConfig";
constexpr char kServerAdministrator[] = "sa";

/// The values of the key "Login" in the machine hive.
class LoginKey {
 public:
  LoginKey(RegistryValues& registry, HostCipher& cipher) : registry_(registry), cipher_(cipher) {}

  [[nodiscard]] QString Text(const char* name, const char* defaultValue = "") const {
    return registry_.sysLoadValueFromLocalMachine(QString::fromLatin1(kLogin), QString::fromLatin1(name),
                                                  QString::fromLatin1(defaultValue));
  }
  [[nodiscard]] QString Secret(const char* name) const { return cipher_.Decipher(Text(name), SecretName(name)); }
  /// Why the last `Secret` of this name could not be deciphered; empty when it could.
  [[nodiscard]] QString Failure(const char* name) const { return cipher_.Failure(SecretName(name)); }

 private:
  [[nodiscard]] static QString SecretName(const char* name) {
    return QStringLiteral("registry value Login\\%1").arg(QString::fromLatin1(name));
  }

  RegistryValues& registry_;
  HostCipher& cipher_;
};

QString ReadServer(RegistryValues& registry, const LoginKey& key) {
  QString server = key.Text("Server");
  if (!server.isEmpty()) return server;
  return registry.sysLoadValueFromRegistry(QString::fromLatin1(kLogin), QStringLiteral("Server"));
}

/// Takes the login to use: the registry's own, else the database user's, else the built-in default.
void ReadLogin(const LoginKey& key, const ServiceSettings& service, const HostCipher& cipher, LoginSettings& settings) {
  Login database = {key.Text("DBUsername"), key.Secret("DBPassword")};
  QString failure = key.Failure("DBPassword");
  if (TrimBlanks(database.user).toUpper() == QStringLiteral("QBX")) {
    database = {QString::fromLatin1(kServerAdministrator), service.builtInPassword2};
    failure.clear();
  }
  Login& login = settings.login;
  login.user = key.Text("SQLLoginUser");
  if (login.user.isEmpty()) login.user = database.user;
  if (login.user.isEmpty()) login.user = QString::fromLatin1(kServerAdministrator);

  if (!key.Text("SQLLoginPassword").isEmpty()) {
    login.password = key.Secret("SQLLoginPassword");
    failure = key.Failure("SQLLoginPassword");
  } else if (!database.password.isEmpty()) {
    login.password = database.password;
  } else {
    const bool version2 = settings.settingsVersion2 && !settings.overrideAutomaticSettings;
    login.password = version2 ? service.builtInPassword2 : service.builtInPassword;
    if (failure.isEmpty()) failure = cipher.Failure(BuiltInPasswordName(version2));
  }
  if (failure.isEmpty()) return;
  settings.passwordFailure =
      failure +
      QStringLiteral(
          " Copy the key file of the computer that enciphered it to this one, or store here what \"marketingctl encipher\" prints.");
}

/// Takes the registry value `Encrypt`. What is neither yes nor no must not connect without encryption unnoticed.
void ReadEncryption(const LoginKey& key, OdbcSettings& settings) {
  const QString value = TrimBlanks(key.Text("Encrypt"));
  settings.encrypt = EqualsNoCase(value, QStringLiteral("Y"));
  if (settings.encrypt || value.isEmpty() || EqualsNoCase(value, QStringLiteral("N"))) return;
  settings.refusal =
      QStringLiteral(
          "The registry value Login\\Encrypt is \"%1\". It has to be Y (with encryption) or N (without). Nothing was sent to the server.")
          .arg(value);
}

/// How a SQL Server is reached.
OdbcSettings ReadSqlServerSettings(const LoginKey& key, const ServiceSettings& service) {
  OdbcSettings settings;
  const QString driver = key.Text("Driver");
  if (!driver.isEmpty()) settings.driver = driver;
  ReadEncryption(key, settings);
  settings.authorities = service.caFile;
  settings.application = QStringLiteral("QBX Marketing");
  return settings;
}

}  // namespace

bool UsesSettingsVersion2(const IniFile& ini, const QString& programFolder) {
  const qint64 stored = LeadingInteger(ini.Read(QStringLiteral("Database"), QStringLiteral("DatabaseSettingsVersion")));
  if (stored > 0) return stored == 2;
  return FindFileNoCase(programFolder, QStringLiteral("QBX_DBCONFIG.EXE")).has_value();
}

LoginSettings ReadLoginSettings(RegistryValues& registry, const IniFile& ini, const QString& programFolder,
                                const ServiceSettings& service, HostCipher& cipher) {
  const LoginKey key(registry, cipher);
  LoginSettings settings;
  settings.companyCode = key.Text("Company", "A");
  settings.server = ReadServer(registry, key);
  settings.settingsVersion2 = UsesSettingsVersion2(ini, programFolder);
  settings.overrideAutomaticSettings = key.Text("OverrideAutomaticSettings") == QStringLiteral("Y");
  ReadLogin(key, service, cipher, settings);
  settings.sqlServer = ReadSqlServerSettings(key, service);
  return settings;
}

ConnectSettings HostConnection::SettingsFor(const LoginSettings& login) {
  RegistryValues& registry = parts_.registry;
  const QString section = QString::fromLatin1(kLogin);
  const QString firewall = QString::fromLatin1(kFConfig);
  return {.companyCode = login.companyCode,
          .settingsVersion2 = login.settingsVersion2,
          .overrideAutomaticSettings = login.overrideAutomaticSettings,
          .alternativePassword = parts_.service.alternativePassword,
          .computerName = parts_.host.ComputerName(),
          .readFConfig = [&registry, section,
                          firewall] { return registry.sysLoadValueFromLocalMachine(section, firewall); },
          .storeFConfig = [&registry, section, firewall](
                              const QString& value) { registry.SaveValueToLocalMachine(section, firewall, value); }};
}

void HostConnection::GetDatabaseSettings() {
  const LoginSettings login =
      ReadLoginSettings(parts_.registry, parts_.ini, parts_.startup.ProgramFolder, parts_.service, parts_.cipher);
  parts_.startup.companyCode = login.companyCode;
  server_ = login.server;
  parts_.sqlServer.SetUp(login.sqlServer);
  DatabaseConnector connector(parts_.connection, parts_.statements, parts_.services, parts_.shell, parts_.diagnostics,
                              SettingsFor(login));
  connected_ = connector.ConnectDatabase(login.server, login.login, parts_.startup.databaseName);
  flags_ = connector.Flags();
  if (!connected_) return;
  if (!Ready()) {
    // "master" holds no tables of the host: every statement would fail and show a box.
    parts_.connection.CountAsNeverOpen();
    return;
  }
  databaseName_ = parts_.startup.databaseName;
  sysLoadUserInfo(parts_.statements, parts_.diagnostics, parts_.startup.user, parts_.userOptions);
  parts_.options.LoadOptions();
}

}  // namespace qbx
