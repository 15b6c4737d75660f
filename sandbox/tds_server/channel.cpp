#include "tds_server/channel.h"

#include <algorithm>

#include "tds_server/bytes.h"

namespace qbx::tds {
namespace {

constexpr qsizetype kHeader = 8;
constexpr quint8 kLastPacket = 0x01;
constexpr qsizetype kLongestMessage = 64 * 1024 * 1024;

qsizetype LengthOf(const QByteArray& header) {
  return static_cast<quint8>(header[2]) << 8 | static_cast<quint8>(header[3]);
}

}  // namespace

/// Waits until that many bytes have come.
/// \return false at the end of the connection
bool Channel::Fill(qsizetype count) {
  while (received_.size() < count) {
    const QByteArray bytes = socket_.Receive();
    if (bytes.isEmpty()) return false;
    received_ += tls_ && tls_->IsReady() ? tls_->Decrypt(bytes) : bytes;
  }
  return true;
}

std::optional<Message> Channel::Receive() {
  Message message;
  for (;;) {
    if (!Fill(kHeader)) return std::nullopt;
    const qsizetype length = LengthOf(received_);
    if (length < kHeader) throw ProtocolError("a packet without a length");
    if (!Fill(length)) return std::nullopt;
    message.type = static_cast<MessageType>(received_[0]);
    const bool last = (static_cast<quint8>(received_[1]) & kLastPacket) != 0;
    message.body.append(received_.constData() + kHeader, length - kHeader);
    received_.remove(0, length);
    if (last) return message;
    if (message.body.size() > kLongestMessage) throw ProtocolError("a message without an end");
  }
}

qsizetype Channel::Send(MessageType type, QByteArrayView bytes, SendPart part) {
  const qsizetype room = packetSize_ - kHeader;
  ByteWriter packets;
  qsizetype sent = 0;
  bool ended = false;
  while (!ended && (part != SendPart::kFullPackets || bytes.size() - sent > room)) {
    const qsizetype count = std::min(room, bytes.size() - sent);
    ended = sent + count == bytes.size();
    packets.U8(static_cast<unsigned>(type)).U8(ended && part == SendPart::kEnd ? kLastPacket : 0);
    packets.BigEndian(static_cast<quint64>(count + kHeader), 2).BigEndian(static_cast<quint64>(session_), 2);
    packets.U8(++packetId_).U8(0).Bytes(bytes.sliced(sent, count));
    sent += count;
  }
  socket_.Send(tls_ && tls_->IsReady() ? tls_->Encrypt(packets.Data()) : packets.Data());
  return sent;
}

void Channel::Encrypt(const TlsIdentity& identity) {
  tls_ = std::make_unique<TlsSession>(identity);
  while (!tls_->IsReady()) {
    const std::optional<Message> message = Receive();
    if (!message || message->type != MessageType::kPreLogin) throw ProtocolError("no encryption was agreed on");
    ByteWriter packet;
    const QByteArray answer = tls_->Handshake(message->body);
    if (answer.isEmpty()) continue;
    packet.U8(static_cast<unsigned>(MessageType::kPreLogin)).U8(kLastPacket);
    packet.BigEndian(static_cast<quint64>(answer.size() + kHeader), 2).U32(0).Bytes(answer);
    socket_.Send(packet.Data());
  }
}

}  // namespace qbx::tds
