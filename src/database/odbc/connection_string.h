// The connection string of an ODBC driver.

#pragma once

#include <QString>

#include "database/connection.h"
#include "database/odbc/server_address.h"

namespace qbx {

/// How the program reaches a SQL Server.
struct OdbcSettings {
  QString driver = QStringLiteral("FreeTDS");  ///< the driver's registered name, or the file of its library
  bool encrypt = false;  ///< encrypts everything and checks the server's certificate, or refuses to connect
  /// FreeTDS only: a file (PEM) of the authorities that sign certificates; empty: the system's. Microsoft's driver
  /// always uses the system's.
  QString authorities = {};
  QString application = {};  ///< the name of this program that the server shows
  QString refusal = {};      ///< why these settings allow no connection; empty: they do
};

/// The file of authorities that the driver uses; empty: the system's.
[[nodiscard]] QString AuthoritiesInUse(const OdbcSettings& settings);

/// What a driver needs for one connection. Time limits are no part of it, but attributes of the connection: FreeTDS has
/// one keyword for the time limits of the log-in and of all statements, Microsoft's driver has none.
struct OdbcConnectionString {
  QString text;  ///< for SQLDriverConnectW; never shown or logged, because it holds the password
  /// The content of the file that the environment variable FREETDSCONF names; empty when no file is needed. Without
  /// this file, FreeTDS does not check certificates.
  QString freeTdsFile = {};
};

/// \param address  with its port
/// \throws DatabaseError (kUnusableSetting)  when the driver cannot read a value, for example a password with "};"
[[nodiscard]] OdbcConnectionString ComposeConnectionString(const ServerAddress& address, const QString& database,
                                                           const Login& login, const OdbcSettings& settings);

}  // namespace qbx
