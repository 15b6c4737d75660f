// The packets of the protocol over a socket, in the clear or encrypted.

#pragma once

#include <QByteArray>
#include <memory>
#include <optional>

#include "tds_server/socket.h"
#include "tds_server/tls.h"

namespace qbx::tds {

enum class MessageType : quint8 {
  kBatch = 0x01,
  kProcedure = 0x03,
  kAnswer = 0x04,
  kAttention = 0x06,
  kTransaction = 0x0E,
  kLogin = 0x10,
  kPreLogin = 0x12,
};

struct Message {
  MessageType type = MessageType::kBatch;
  QByteArray body;
};

/// How much of the given bytes is sent.
enum class SendPart {
  kFullPackets,  ///< more of the message will follow
  kAll,          ///< the message stays open
  kEnd,          ///< all, and the message ends
};

/// Sends and receives messages, which travel in packets. One thread may receive while another sends.
class Channel {
 public:
  explicit Channel(int socket) : socket_(socket) {}

  /// Waits for a whole message.
  /// \return nothing at the end of the connection
  [[nodiscard]] std::optional<Message> Receive();
  /// \return the count of bytes sent
  qsizetype Send(MessageType type, QByteArrayView bytes, SendPart part);

  /// Agrees on TLS inside pre-login messages. All later bytes are encrypted.
  /// \throws ProtocolError when the client refuses
  void Encrypt(const TlsIdentity& identity);
  /// Later bytes are not encrypted, because only the login was to be.
  void EndEncryption() { tls_.reset(); }

  void SetPacketSize(int bytes) { packetSize_ = bytes; }
  void SetSession(int number) { session_ = number; }
  [[nodiscard]] Socket& Wire() { return socket_; }

 private:
  [[nodiscard]] bool Fill(qsizetype count);

  Socket socket_;
  std::unique_ptr<TlsSession> tls_;
  QByteArray received_;
  int packetSize_ = 4096;
  int session_ = 0;
  quint8 packetId_ = 0;
};

}  // namespace qbx::tds
