// Looks at the certificate of a server, without a login. The drivers only say that they did not connect.

#pragma once

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QStringList>
#include <chrono>

#include "database/odbc/server_address.h"

namespace qbx {

/// Why a certificate is not trusted.
enum class CertificateFault {
  kNone,
  kNotShown,          ///< the connection ended, or took too long, before the certificate was seen and agreed on
  kUnknownAuthority,  ///< no authority that this computer knows has signed it
  kOtherName,         ///< it was issued for other names than the server's
  kOutOfDate,         ///< it has expired, or does not hold yet
  kOther,
};

struct CertificateFindings {
  CertificateFault fault = CertificateFault::kNone;
  QStringList names = {};  ///< the names and addresses that the certificate was issued for
  QDate from = {};         ///< the first day on which it holds (UTC)
  QDate until = {};        ///< the last one
  QString reason = {};     ///< the library's words for the fault
};

/// Whether a text (PEM) has a certificate in it that can be read, beside whatever else.
[[nodiscard]] bool HoldsCertificate(const QByteArray& pem);

/// Agrees with the server on encryption as a client does before its login (TLS 1.2 in the server's first packets), and
/// ends the connection.
/// \param address      with its port; its host must be one of the names in the certificate
/// \param authorities  a file (PEM) of the authorities that sign certificates; empty: the system's
/// \param limit        of the whole call
[[nodiscard]] CertificateFindings CheckCertificate(const ServerAddress& address, const QString& authorities,
                                                   std::chrono::milliseconds limit);

}  // namespace qbx
