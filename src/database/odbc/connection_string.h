// What an ODBC driver is told to connect with.

#pragma once

#include <QString>

#include "database/connection.h"
#include "database/odbc/server_address.h"

namespace qbx {

/// How the program reaches a SQL Server.
struct OdbcSettings {
  QString driver = QStringLiteral("FreeTDS");  ///< the driver's name as registered, or the file of its library
  bool encrypt = false;  ///< all is encrypted and the server's certificate checked, or no connection
  /// FreeTDS: a file (PEM) of the authorities that sign certificates; empty: the system's. Microsoft's driver asks the
  /// system always.
  QString authorities = {};
  QString application = {};  ///< what the server shows for this program
  QString refusal = {};      ///< why nothing may be connected to with what is set; empty: it may
};

/// The strings for one connection. Time limits are no part of them: FreeTDS has one word for those of the log-in and of
/// every statement, Microsoft's driver none. They are attributes of the connection.
struct OdbcConnectionString {
  QString text;    ///< for SQLDriverConnectW; holds the password, so it is never shown or logged
  QString forLog;  ///< the same with "***" for the password
  /// The file that FreeTDS has to find by its environment variable FREETDSCONF, since it checks a certificate in no
  /// other way; empty where no file is needed.
  QString freeTdsFile;
};

/// \param address   with its port
/// \throws DatabaseError  for what the driver cannot be told, as a password with "};" in it
[[nodiscard]] OdbcConnectionString ComposeConnectionString(const ServerAddress& address, const QString& database,
                                                           const Login& login, const OdbcSettings& settings);

}  // namespace qbx
