// Certificates to test encryption with: an authority, and a server's certificate signed by it.

#pragma once

#include <QString>

namespace qbx::tds {

/// Files (PEM) of one server.
struct CertificateFiles {
  QString authority;  ///< the authority that a client must trust
  QString certificate;
  QString key;
};

/// Makes new certificates in an existing folder. A client that knows another folder's authority must refuse this
/// server.
/// \param host  the name in the certificate; "localhost" also gets the address 127.0.0.1
/// \throws ProtocolError when they cannot be written
[[nodiscard]] CertificateFiles MakeCertificates(const QString& folder, const QString& host);

}  // namespace qbx::tds
