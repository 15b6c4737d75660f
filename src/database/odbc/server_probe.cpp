#include "database/odbc/server_probe.h"

#include "database/odbc/probe_socket.h"

namespace qbx {
namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr char kAnswerType = 4;
constexpr qsizetype kOption = 5;  // mark (1 byte), place and length (2 bytes each, high byte first)
constexpr char kVersionMark = 0;
constexpr char kEncryptionMark = 1;
constexpr char kEndMark = '\xFF';

/// Receives one whole answer, or the beginning of one that is no server's; nothing when the time is over. The answer is
/// empty when the other side ended the connection.
std::optional<QByteArray> ReceiveAnswer(const ProbeSocket& socket, ProbeEnd end) {
  QByteArray answer;
  while (answer.size() < kPacketHeader || answer.size() < PacketLength(answer)) {
    const std::optional<QByteArray> bytes = socket.Receive(end);
    if (!bytes) return std::nullopt;
    answer += *bytes;
    if (bytes->isEmpty() || answer[0] != kAnswerType) break;
  }
  return answer;
}

/// The bytes of an answer's option; empty when it lacks the option.
QByteArray OptionOf(const QByteArray& answer, char mark) {
  const QByteArray body = answer.mid(kPacketHeader);
  const auto number = [&body](qsizetype at) {
    return static_cast<qsizetype>(static_cast<quint8>(body[at]) * 256 + static_cast<quint8>(body[at + 1]));
  };
  for (qsizetype at = 0; at + kOption <= body.size() && body[at] != kEndMark; at += kOption)
    if (body[at] == mark) return body.mid(number(at + 1), number(at + 3));
  return {};
}

ServerProbe Understand(const QByteArray& answer) {
  const QByteArray version = OptionOf(answer, kVersionMark);
  const QByteArray encryption = OptionOf(answer, kEncryptionMark);
  if (answer.size() < kPacketHeader || answer[0] != kAnswerType || version.size() < 4 || encryption.isEmpty())
    return {.presence = ServerPresence::kStranger};
  ServerProbe probe{.presence = ServerPresence::kThere};
  const auto byte = [&version](int at) { return static_cast<int>(static_cast<quint8>(version[at])); };
  probe.version = QStringLiteral("%1.%2.%3").arg(byte(0)).arg(byte(1)).arg(byte(2) * 256 + byte(3));
  constexpr char kOff = 0;
  constexpr char kNotSupported = 2;
  probe.encryption = encryption[0] == kOff            ? ServerEncryption::kLoginOnly
                     : encryption[0] == kNotSupported ? ServerEncryption::kNone
                                                      : ServerEncryption::kAll;
  return probe;
}

ServerProbe ProbeAddress(const addrinfo& peer, ProbeEnd end) {
  const ProbeSocket socket(peer);
  const Reached reached = socket.Connect(end);
  if (reached != Reached::kConnected)
    return {.presence = reached == Reached::kRefused ? ServerPresence::kPortClosed : ServerPresence::kNoAnswer};
  socket.Send(FirstMessage(false));
  const ProbeEnd now = SteadyClock::now();
  std::optional<QByteArray> answer = ReceiveAnswer(socket, now + (end - now) / 2);
  if (!answer) {
    // Programs that read lines of text, such as web servers, wait for the end of one.
    socket.Send("\r\n\r\n");
    answer = ReceiveAnswer(socket, end);
  }
  if (!answer) return {.presence = ServerPresence::kSilent};
  return answer->isEmpty() ? ServerProbe{.presence = ServerPresence::kHungUp} : Understand(*answer);
}

}  // namespace

ServerProbe ProbeServer(const ServerAddress& address, std::chrono::milliseconds limit) {
  const ProbeEnd end = SteadyClock::now() + limit;
  const AddressList addresses = AddressesOf(address);
  if (!addresses) return {.presence = ServerPresence::kNameUnknown};
  ServerProbe probe{.presence = ServerPresence::kPortClosed};
  for (const addrinfo* peer = addresses.get(); peer != nullptr; peer = peer->ai_next) {
    const ServerProbe tried = ProbeAddress(*peer, end);
    if (tried.presence >= probe.presence) probe = tried;
    if (probe.presence == ServerPresence::kThere) break;
  }
  return probe;
}

}  // namespace qbx
