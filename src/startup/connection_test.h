// Trying out the connection, for whoever sets it up.

#pragma once

#include <QString>
#include <optional>

#include "database/odbc/server_probe.h"
#include "startup/application.h"

namespace qbx {

enum class ConnectionProblem {
  kNone,
  kServerName,   ///< what is set cannot be the name of a server
  kNameUnknown,  ///< no computer has that name, or the instance was not found
  kPortClosed,
  kNoAnswer,
  kNoSqlServer,  ///< something else answers there
  kDriverMissing,
  kSettingRefused,      ///< what is set cannot be used; nothing was sent
  kPasswordUnreadable,  ///< the stored password cannot be deciphered; nothing was sent
  kCannotEncrypt,       ///< encryption is set, and the server offers none
  kCertificateRefused,  ///< encryption is set; the certificate was refused, or the connection broke meanwhile
  kConnectionLost,      ///< during the log-in, or just after it
  kLoginRefused,
  kNoDatabase,
  kDatabaseOffline,
  kHostTablesMissing,  ///< a database, but not of the host product
  kCompanyMissing,     ///< it has no options of the company that is set
  kOther,
};

/// What the test found out; what it did not get to is empty or 0.
struct ConnectionFindings {
  ConnectionProblem problem = ConnectionProblem::kNone;
  QString text = {};    ///< what is wrong and what can be done, in plain words
  QString server = {};  ///< with the instance, as it is connected to; empty: the embedded engine
  QString host = {};
  int port = 0;
  QString driver = {};
  QString login = {};  ///< the user of the login for a SQL Server
  QString database = {};
  QString serverVersion = {};
  std::optional<ServerEncryption> encryption = {};
  bool alternativePassword = false;  ///< the stored password was refused, the alternative one was taken
  double roundTripMilliseconds = 0;
  int databaseVersion = 0;
  int moduleVersion = 0;
};

/// Connects as a start would, once, and asks nothing of the user; nothing is changed or logged.
/// \param app  whose names were settled and which has not connected
[[nodiscard]] ConnectionFindings TestConnection(Application& app);

}  // namespace qbx
