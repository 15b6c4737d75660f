// Making the shared connection: the connection string, the attempts, a database that is offline, and what is offered
// when the server does not answer.

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

/// What connecting needs to know besides the arguments of `ConnectDatabase`.
struct ConnectSettings {
  QString companyCode =
      QStringLiteral("A");  ///< "A": by way of "master", with a look at the status; any other: straight to the database
  bool settingsVersion2 = false;              ///< the host's newer instance naming
  bool overrideAutomaticSettings = false;     ///< the server is used as it stands
  QString alternativePassword = {};           ///< tried once after a refused login
  QString computerName = {};                  ///< this computer, as HostInfo gives it
  std::function<QString()> readFConfig = {};  ///< the stored value "FConfig": "Y" once the firewall rules were added
  std::function<void(const QString& value)> storeFConfig = {};
};

enum class DatabaseStatus { kOnline = 0, kNotAvailable = 1, kDeclined = 2 };

/// What was found out while connecting; kept for the run.
struct ConnectionFlags {
  bool localServer = false;          ///< the server names this computer
  bool alternativePassword = false;  ///< the alternative password is in use
  DatabaseStatus status = DatabaseStatus::kOnline;
  QString databaseFileFolder = {};  ///< with a separator at the end; only when the database is "master"
};

/// The server as it is addressed: the given one, with "\QBX" behind it when settings version 2 applies and is not
/// overridden.
[[nodiscard]] QString ServerName(const QString& server, const ConnectSettings& settings);

/// "Provider=SQLOLEDB;OLE DB Services = -2;Data Source=...;Initial Catalog=...;". It never holds a login.
[[nodiscard]] QString BuildConnectionString(const QString& server, const QString& database,
                                            const ConnectSettings& settings);

/// Whether the server, without an instance behind "\", is "localhost" or "127.0.0.1", or its first 15 characters are
/// those of this computer's name. Case does not matter.
[[nodiscard]] bool IsLocalServer(const QString& server, const QString& computerName);

/// Opens the shared connection, and says what went wrong when it cannot.
///
///   DatabaseConnector connector(connection, statements, services, shell, diagnostics, settings);
///   if (connector.ConnectDatabase(server, login, database)) LoadOptions();
///
/// Never throws. Everything the user has to know or decide was shown before it returns.
class DatabaseConnector {
 public:
  DatabaseConnector(Connection& connection, Statements& statements, ServiceControl& services, Shell& shell,
                    Diagnostics diagnostics, ConnectSettings settings);

  /// Closes the connection, then opens it: two attempts of 6 and 9 seconds, the alternative password after a refused
  /// login. With company code "A" the database's status is looked at first, and the user may have a database brought
  /// online; a damaged one ("SUSPECT") is a failure, as is a
  /// name with ";" or "]". A server that this build has no driver for is tried once, and no service is offered for it.
  /// \return whether the connection is open at the end. True also when the database is not available: the connection
  ///         is then with "master" and the status in `Flags()` tells.
  bool ConnectDatabase(const QString& server, const Login& login, const QString& database);

  [[nodiscard]] const ConnectionFlags& Flags() const { return flags_; }

 private:
  struct Target {
    QString server;
    Login login;
    QString database;
  };

  /// Tries twice, and with the alternative password (then kept in `target`) after a refused login.
  /// \return the failure that ends the attempts, nothing when connected
  std::optional<DatabaseError> TryToOpen(Target& target);
  std::optional<DatabaseError> Open(const Target& target, const QString& database);
  void ReadFileFolder();
  /// Looks at the status of the database behind a connection with "master" and opens it when it is, or can be brought,
  /// online.
  std::optional<DatabaseError> LeaveMaster(const Target& target);
  /// Empty for a database that the server does not know; nothing when the server did not say.
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
