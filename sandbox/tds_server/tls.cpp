#include "tds_server/tls.h"

#include <openssl/err.h>
#include <openssl/ssl.h>

#include <string>

#include "tds_server/bytes.h"

namespace qbx::tds {
namespace {

[[noreturn]] void Fail(const char* what) {
  char reason[256] = "";
  ERR_error_string_n(ERR_get_error(), reason, sizeof(reason));
  throw ProtocolError(std::string(what) + ": " + reason);
}

}  // namespace

TlsIdentity::TlsIdentity(const QString& certificateFile, const QString& keyFile)
    : context_(SSL_CTX_new(TLS_server_method())) {
  // The packets of the handshake end with it, but TLS 1.3 would send tickets afterwards.
  SSL_CTX_set_max_proto_version(context_, TLS1_2_VERSION);
  const bool good = SSL_CTX_use_certificate_chain_file(context_, certificateFile.toLocal8Bit().constData()) == 1 &&
                    SSL_CTX_use_PrivateKey_file(context_, keyFile.toLocal8Bit().constData(), SSL_FILETYPE_PEM) == 1 &&
                    SSL_CTX_check_private_key(context_) == 1;
  if (good) return;
  SSL_CTX_free(context_);
  Fail("the certificate cannot be used");
}

TlsIdentity::~TlsIdentity() {
  SSL_CTX_free(context_);
}

TlsSession::TlsSession(const TlsIdentity& identity) : session_(SSL_new(identity.context_)) {
  SSL_set_bio(session_, BIO_new(BIO_s_mem()), BIO_new(BIO_s_mem()));
  SSL_set_accept_state(session_);
}

TlsSession::~TlsSession() {
  SSL_free(session_);
}

QByteArray TlsSession::Handshake(QByteArrayView received) {
  BIO_write(SSL_get_rbio(session_), received.data(), static_cast<int>(received.size()));
  const int result = SSL_do_handshake(session_);
  ready_ = result == 1;
  if (!ready_ && SSL_get_error(session_, result) != SSL_ERROR_WANT_READ) Fail("no encryption");
  return Outgoing();
}

QByteArray TlsSession::Decrypt(QByteArrayView received) {
  const std::lock_guard lock(mutex_);
  BIO_write(SSL_get_rbio(session_), received.data(), static_cast<int>(received.size()));
  QByteArray bytes;
  QByteArray part(0x4000, Qt::Uninitialized);
  for (;;) {
    const int count = SSL_read(session_, part.data(), static_cast<int>(part.size()));
    if (count <= 0) return bytes;
    bytes.append(part.constData(), count);
  }
}

QByteArray TlsSession::Encrypt(QByteArrayView bytes) {
  const std::lock_guard lock(mutex_);
  SSL_write(session_, bytes.data(), static_cast<int>(bytes.size()));
  return Outgoing();
}

QByteArray TlsSession::Outgoing() {
  BIO* const wire = SSL_get_wbio(session_);
  QByteArray bytes(static_cast<qsizetype>(BIO_ctrl_pending(wire)), Qt::Uninitialized);
  BIO_read(wire, bytes.data(), static_cast<int>(bytes.size()));
  return bytes;
}

}  // namespace qbx::tds
