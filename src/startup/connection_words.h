// What the test of the connection says.

#pragma once

#include <QString>

#include "database/database_error.h"
#include "database/odbc/certificate_check.h"
#include "startup/connection_test.h"

namespace qbx {

/// How long the test waits for an answer before the login, and for the login.
inline constexpr int kLoginLimitSeconds = 6;

/// A problem that the driver has no words for.
[[nodiscard]] QString WordsFor(ConnectionProblem problem, const ConnectionFindings& findings);

/// An open port where nothing answers; empty for everything else.
[[nodiscard]] QString SilenceWords(ServerPresence presence, const ConnectionFindings& findings);

/// A connection that was lost during the log-in for a reason that only the driver may know.
[[nodiscard]] QString LossWords(const DatabaseError& error, const ConnectionFindings& findings);

/// A certificate that the driver did not accept, and what can be done.
/// \param authorities  the file of authorities in use; empty: the system's
[[nodiscard]] QString CertificateWords(const CertificateFindings& certificate, const QString& authorities,
                                       const ConnectionFindings& findings);

/// What to say of a connection that works but is not encrypted at all; empty for every other one.
[[nodiscard]] QString EncryptionWarning(const ConnectionFindings& findings);

}  // namespace qbx
