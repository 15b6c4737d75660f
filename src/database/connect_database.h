// Opens the shared connection: builds the connection string, tries several times, brings an offline database online,
// and offers help when the server does not answer.

#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "database/connection.h"
#include "database/statements.h"
#include "diagnostics/diagnostics.h"
#include "diagnostics/service_control.h"
#include "platform/shell.h"

namespace qbx {

/// What connecting needs besides the arguments of `ConnectDatabase`.
struct ConnectSettings {
  /// "A": connect to "master" first and read the status; any other code: connect to the database directly.
  QString companyCode = QStringLiteral("A");
  bool settingsVersion2 = false;              ///< the host names its instances in the newer way
  bool overrideAutomaticSettings = false;     ///< the server name is used as given
  QString alternativePassword = {};           ///< tried once after a refused login
  QString computerName = {};                  ///< this computer's name, as HostInfo gives it
  std::function<QString()> readFConfig = {};  ///< the stored value "FConfig": "Y" once the firewall rules were added
  std::function<void(const QString& value)> storeFConfig = {};
};

enum class DatabaseStatus { kOnline = 0, kNotAvailable = 1, kDeclined = 2 };

/// What connecting found out. Kept for the whole run. Nothing reads localServer and databaseFileFolder yet.
struct ConnectionFlags {
  bool localServer = false;          ///< the server name means this computer
  bool alternativePassword = false;  ///< the alternative password is in use
  DatabaseStatus status = DatabaseStatus::kOnline;
  QString databaseFileFolder = {};  ///< with a separator at the end; only when the database is "master"
};

/// Why a name must not stand in a connection string or a statement (kUnusableSetting); nothing when both may.
[[nodiscard]] std::optional<DatabaseError> NameProblem(const QString& server, const QString& database);

/// The full server name: the given name, followed by "\QBX" when settings version 2 applies and is not overridden.
[[nodiscard]] QString ServerName(const QString& server, const ConnectSettings& settings);

/// "Provider=SQLOLEDB;OLE DB Services = -2;Data Source=...;Initial Catalog=...;". It never holds a login.
[[nodiscard]] QString BuildConnectionString(const QString& server, const QString& database,
                                            const ConnectSettings& settings);

/// Whether the server is this computer: its name without the instance is "localhost" or "127.0.0.1", or its first 15
/// characters equal those of this computer's name, without regard to case.
[[nodiscard]] bool IsLocalServer(const QString& server, const QString& computerName);

/// Opens the shared connection, and tells the user what is wrong when that fails.
///
///   DatabaseConnector connector(connection, statements, services, shell, diagnostics, settings);
///   if (connector.ConnectDatabase(server, login, database)) LoadOptions();
///
/// Never throws. When it returns, every message was shown and every question asked.
class DatabaseConnector {
 public:
  DatabaseConnector(Connection& connection, Statements& statements, ServiceControl& services, Shell& shell,
                    Diagnostics diagnostics, ConnectSettings settings);

  /// Closes the connection and opens it again. It makes two attempts of 6 and 9 seconds; after a refused login it tries
  /// the alternative password. With company code "A" it reads the database's status first, and the user may bring an
  /// offline database online. A damaged database ("SUSPECT") and a name with ";" or "]" are failures. A server that
  /// this build has no driver for is tried once, and no service is offered for it. Cancel ends the attempts.
  /// \return whether the connection is open at the end. True also when the database is not available: the connection is
  ///         then with "master", and `Flags()` has the status.
  bool ConnectDatabase(const QString& server, const Login& login, const QString& database);

  [[nodiscard]] const ConnectionFlags& Flags() const { return flags_; }

 private:
  struct Target {
    QString server;
    Login login;
    QString database;
  };

  /// Tries twice, and after a refused login with the alternative password, which then stays in `target`.
  /// \return the failure that ended the attempts; nothing when connected
  std::optional<DatabaseError> TryToOpen(Target& target);
  std::optional<DatabaseError> Open(const Target& target, const QString& database);
  void ReadFileFolder();
  /// Reads the status of the database over a connection with "master". Opens the database when it is online or can be
  /// brought online.
  std::optional<DatabaseError> LeaveMaster(const Target& target);
  /// Empty when the server does not know the database; nothing when the server gave no answer.
  [[nodiscard]] std::optional<QString> ReadStatus(const QString& database);
  [[nodiscard]] bool AskToBringOnline(const QString& status, Reason reason);
  void ReportFailure(const QString& server, const Login& login, const DatabaseError& error);
  [[nodiscard]] bool AskToStartService(const QString& message);
  void OpenFirewall();
  void RestartService();
  void WaitForService(int milliseconds);

  Connection& connection_;
  Statements& statements_;
  ServiceControl& services_;
  Shell& shell_;
  Diagnostics diagnostics_;
  ConnectSettings settings_;
  ConnectionFlags flags_;
};

}  // namespace qbx
