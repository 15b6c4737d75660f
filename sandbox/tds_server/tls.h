// The server's side of TLS, without a socket.

#pragma once

#include <QByteArray>
#include <QString>
#include <mutex>

struct ssl_ctx_st;
struct ssl_st;

namespace qbx::tds {

/// The certificate and key that identify a server.
class TlsIdentity {
 public:
  /// \param certificateFile  PEM, followed by the chain
  /// \param keyFile          PEM
  /// \throws ProtocolError when they cannot be read or do not belong together
  TlsIdentity(const QString& certificateFile, const QString& keyFile);
  ~TlsIdentity();
  TlsIdentity(const TlsIdentity&) = delete;
  TlsIdentity& operator=(const TlsIdentity&) = delete;

 private:
  friend class TlsSession;
  ssl_ctx_st* context_;
};

/// TLS of one connection. Takes bytes from the wire and returns bytes for the wire. One thread may decrypt while
/// another encrypts.
class TlsSession {
 public:
  explicit TlsSession(const TlsIdentity& identity);
  ~TlsSession();
  TlsSession(const TlsSession&) = delete;
  TlsSession& operator=(const TlsSession&) = delete;

  /// Continues the handshake.
  /// \return the bytes to send
  /// \throws ProtocolError when the client refuses
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
