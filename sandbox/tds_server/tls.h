// The server's side of TLS, apart from any socket.

#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <mutex>

struct ssl_ctx_st;
struct ssl_st;

namespace qbx::tds {

/// What a server identifies itself with.
class TlsIdentity {
 public:
  /// \param certificateFile  PEM, with the chain behind it
  /// \param keyFile          PEM
  /// \throws ProtocolError where they cannot be read or do not belong together
  TlsIdentity(const QString& certificateFile, const QString& keyFile);
  ~TlsIdentity();
  TlsIdentity(const TlsIdentity&) = delete;
  TlsIdentity& operator=(const TlsIdentity&) = delete;

 private:
  friend class TlsSession;
  ssl_ctx_st* context_;
};

/// One connection's TLS: bytes of the wire go in, bytes for the wire come out. One thread may decrypt while another
/// encrypts.
class TlsSession {
 public:
  explicit TlsSession(const TlsIdentity& identity);
  ~TlsSession();
  TlsSession(const TlsSession&) = delete;
  TlsSession& operator=(const TlsSession&) = delete;

  /// Goes on with the handshake.
  /// \return what has to be sent
  /// \throws ProtocolError where the client refuses
  [[nodiscard]] QByteArray Handshake(QByteArrayView received);
  [[nodiscard]] bool IsReady() const { return ready_; }

  [[nodiscard]] QByteArray Decrypt(QByteArrayView received);
  [[nodiscard]] QByteArray Encrypt(QByteArrayView bytes);

 private:
  [[nodiscard]] QByteArray Outgoing();

  std::mutex mutex_;
  ssl_st* session_;
  bool ready_ = false;
};

}  // namespace qbx::tds
