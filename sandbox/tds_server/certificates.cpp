#include "tds_server/certificates.h"

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "tds_server/bytes.h"

namespace qbx::tds {
namespace {

template <auto Free>
struct Freed {
  template <typename Object>
  void operator()(Object* object) const {
    Free(object);
  }
};
using Key = std::unique_ptr<EVP_PKEY, Freed<EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Freed<X509_free>>;

constexpr long kDay = 24 * 60 * 60;

void SetName(X509_NAME* name, const QByteArray& text) {
  X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8, reinterpret_cast<const unsigned char*>(text.constData()), -1,
                             -1, 0);
}

void AddExtension(X509* certificate, X509V3_CTX& context, int id, const char* value) {
  const std::unique_ptr<X509_EXTENSION, Freed<X509_EXTENSION_free>> extension(
      X509V3_EXT_conf_nid(nullptr, &context, id, value));
  X509_add_ext(certificate, extension.get(), -1);
}

/// \param issuer  null: the certificate signs itself
Certificate Sign(const QByteArray& name, EVP_PKEY* key, X509* issuer, EVP_PKEY* issuerKey, const QByteArray& host) {
  Certificate certificate(X509_new());
  X509_set_version(certificate.get(), X509_VERSION_3);
  ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), issuer == nullptr ? 1 : 2);
  X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -kDay);
  X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 30 * kDay);
  X509_set_pubkey(certificate.get(), key);
  SetName(X509_get_subject_name(certificate.get()), name);
  X509* const signer = issuer == nullptr ? certificate.get() : issuer;
  X509_set_issuer_name(certificate.get(), X509_get_subject_name(signer));
  X509V3_CTX context;
  X509V3_set_ctx(&context, signer, certificate.get(), nullptr, nullptr, 0);
  AddExtension(certificate.get(), context, NID_basic_constraints, issuer == nullptr ? "critical,CA:TRUE" : "CA:FALSE");
  if (issuer == nullptr) AddExtension(certificate.get(), context, NID_key_usage, "critical,keyCertSign");
  if (!host.isEmpty()) AddExtension(certificate.get(), context, NID_subject_alt_name, host.constData());
  X509_sign(certificate.get(), issuerKey, EVP_sha256());
  return certificate;
}

template <typename Write>
QString WriteFile(const QString& path, const Write& write) {
  const std::unique_ptr<std::FILE, Freed<std::fclose>> file(std::fopen(path.toLocal8Bit().constData(), "w"));
  if (!file || write(file.get()) != 1 || std::fflush(file.get()) != 0)
    throw ProtocolError(path.toStdString() + " cannot be written: " + std::strerror(errno));
  return path;
}

}  // namespace

CertificateFiles MakeCertificates(const QString& folder, const QString& host) {
  const Key authorityKey(EVP_EC_gen("P-256"));
  const Key key(EVP_EC_gen("P-256"));
  QByteArray names = "DNS:" + host.toUtf8();
  if (host == QLatin1String("localhost")) names += ",IP:127.0.0.1";
  const Certificate authority =
      Sign("Sandbox authority of " + folder.toUtf8().right(40), authorityKey.get(), nullptr, authorityKey.get(), {});
  const Certificate certificate = Sign(host.toUtf8(), key.get(), authority.get(), authorityKey.get(), names);
  const auto writeCertificate = [](X509* which) {
    return [which](std::FILE* file) { return PEM_write_X509(file, which); };
  };
  return {WriteFile(folder + QStringLiteral("/authority.pem"), writeCertificate(authority.get())),
          WriteFile(folder + QStringLiteral("/certificate.pem"), writeCertificate(certificate.get())),
          WriteFile(folder + QStringLiteral("/key.pem"), [&key](std::FILE* file) {
            return PEM_write_PrivateKey(file, key.get(), nullptr, nullptr, 0, nullptr, nullptr);
          })};
}

}  // namespace qbx::tds
