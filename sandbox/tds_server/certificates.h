// Certificates to try encryption with: an authority of one's own, and a server's certificate that it signed.

#pragma once

#include <QString>

namespace qbx::tds {

/// Files (PEM) of one server.
struct CertificateFiles {
  QString authority;  ///< what a client has to trust
  QString certificate;
  QString key;
};

/// Makes them anew in a folder that exists. A client that knows another folder's authority must refuse this server.
/// \param host  the name that the certificate is for; the address 127.0.0.1 is added to "localhost"
/// \throws ProtocolError where they cannot be written
[[nodiscard]] CertificateFiles MakeCertificates(const QString& folder, const QString& host);

}  // namespace qbx::tds
