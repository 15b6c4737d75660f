// Encrypted connections with servers of good, foreign, wrongly named and missing certificates.

#include <gtest/gtest.h>

#include "database/odbc/odbc_driver.h"
#include "support/embedded_host.h"
#include "tds_server/certificates.h"
#include "tds_server/server.h"

namespace qbx::test {
namespace {

/// The outcome of one attempt to connect.
struct Tried {
  bool connected = false;
  int logins = 0;     ///< logins that the server received
  int encrypted = 0;  ///< how many of them came over an encrypted connection
};

Tried Try(const tds::TlsIdentity* identity, const QString& authorities, bool encrypt = true) {
  EmbeddedHost host;
  tds::Server server(host.engine, 0, identity);
  OdbcDriver driver;
  driver.SetUp({.encrypt = encrypt, .authorities = authorities});
  Tried tried;
  try {
    const auto session = driver.Connect({QStringLiteral("127.0.0.1,%1").arg(server.Port()), QStringLiteral("Garage")},
                                        {QStringLiteral("sa"), QString()}, 10);
    tried.connected = Recordset::ReadAll(session->Execute(QStringLiteral("SELECT 1 AS One"))).Field(0).ToInt() == 1;
  } catch (const DatabaseError&) {
    tried.connected = false;
  }
  tried.logins = server.Counted().logins;
  tried.encrypted = server.Counted().encryptedLogins;
  return tried;
}

TEST(Encryption, ConnectsOnlyWithATrustedCertificate) {
  const TempFolder folder;
  const TempFolder others;
  const TempFolder renamed;
  const auto make = [](const TempFolder& in, const char* name) {
    return tds::MakeCertificates(in.Path(), QLatin1String(name));
  };
  const tds::CertificateFiles good = make(folder, "localhost");
  const tds::CertificateFiles other = make(others, "localhost");
  const tds::CertificateFiles wrongName = make(renamed, "another.example");
  const tds::TlsIdentity identity(good.certificate, good.key);
  const tds::TlsIdentity otherName(wrongName.certificate, wrongName.key);

  const Tried checked = Try(&identity, good.authority);
  EXPECT_TRUE(checked.connected);
  EXPECT_EQ(checked.encrypted, 1);
  // The password is never sent to a server without a trusted certificate.
  for (const Tried& refused :
       {Try(&identity, other.authority), Try(&otherName, wrongName.authority), Try(nullptr, good.authority)}) {
    EXPECT_FALSE(refused.connected);
    EXPECT_EQ(refused.logins, 0);
  }
  // Without the wish for encryption, only the login is encrypted, if the server can encrypt.
  const Tried plain = Try(&identity, {}, false);
  EXPECT_TRUE(plain.connected);
  EXPECT_EQ(plain.encrypted, 0);
  EXPECT_TRUE(Try(nullptr, {}, false).connected);
}

}  // namespace
}  // namespace qbx::test
