#include "database/odbc/server_probe.h"

#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <memory>
#include <optional>

namespace qbx {
namespace {

using SteadyClock = std::chrono::steady_clock;
using AddressList = std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)>;

constexpr qsizetype kHeader = 8;  // type, status, length (2 bytes, high byte first), and 4 bytes without use here
constexpr char kAnswerType = 4;
constexpr qsizetype kOption = 5;  // mark (1 byte), place and length (2 bytes each, high byte first)
constexpr char kVersionMark = 0;
constexpr char kEncryptionMark = 1;
constexpr char kEndMark = '\xFF';

/// The message to the server: a version, and that the client leaves encryption to the server.
QByteArray Question() {
  constexpr std::array<char, 26> kPacket = {0x12,     1, 0,  26, 0, 0, 1, 0,  // one packet of 26 bytes
                                            0,        0, 11, 0,  6,           // version: place 11, 6 bytes
                                            1,        0, 17, 0,  1,           // encryption: place 17, 1 byte
                                            kEndMark, 9, 0,  0,  0, 0, 0, 0};
  return {kPacket.data(), kPacket.size()};
}

class ProbeSocket {
 public:
  explicit ProbeSocket(const addrinfo& peer)
      : socket_(::socket(peer.ai_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}
  ~ProbeSocket() {
    if (socket_ >= 0) ::close(socket_);
  }
  ProbeSocket(const ProbeSocket&) = delete;
  ProbeSocket& operator=(const ProbeSocket&) = delete;

  [[nodiscard]] int Descriptor() const { return socket_; }
  void Send(const QByteArray& bytes) const {
    ::send(socket_, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
  }
  /// \return whether the socket became ready in time
  [[nodiscard]] bool WaitFor(short what, SteadyClock::time_point end) const {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - SteadyClock::now()).count();
    pollfd polled = {socket_, what, 0};
    return left > 0 && ::poll(&polled, 1, static_cast<int>(left)) > 0;
  }

 private:
  int socket_;
};

ServerPresence Reach(const ProbeSocket& socket, const addrinfo& peer, SteadyClock::time_point end) {
  if (::connect(socket.Descriptor(), peer.ai_addr, peer.ai_addrlen) == 0) return ServerPresence::kThere;
  if (errno == EINPROGRESS) {
    if (!socket.WaitFor(POLLOUT, end)) return ServerPresence::kNoAnswer;
    socklen_t size = sizeof(errno);
    int failure = 0;
    ::getsockopt(socket.Descriptor(), SOL_SOCKET, SO_ERROR, &failure, &size);
    if (failure == 0) return ServerPresence::kThere;
    errno = failure;
  }
  return errno == ECONNREFUSED ? ServerPresence::kPortClosed : ServerPresence::kNoAnswer;
}

/// Receives one whole answer, or the beginning of one that is no server's; nothing when the time is over. The answer is
/// empty when the other side ended the connection.
std::optional<QByteArray> Receive(const ProbeSocket& socket, SteadyClock::time_point end) {
  QByteArray answer;
  qsizetype wanted = kHeader;
  while (answer.size() < wanted) {
    if (!socket.WaitFor(POLLIN, end)) return std::nullopt;
    char bytes[4096];
    const ssize_t got = ::recv(socket.Descriptor(), bytes, sizeof(bytes), 0);
    if (got < 0 && (errno == EAGAIN || errno == EINTR)) continue;
    if (got <= 0) break;
    answer.append(bytes, got);
    if (answer[0] != kAnswerType) break;
    if (answer.size() >= kHeader)
      wanted =
          qMax(kHeader, static_cast<qsizetype>(static_cast<quint8>(answer[2]) * 256 + static_cast<quint8>(answer[3])));
  }
  return answer;
}

/// The bytes of an answer's option; empty when it lacks the option.
QByteArray OptionOf(const QByteArray& answer, char mark) {
  const QByteArray body = answer.mid(kHeader);
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
  if (answer.size() < kHeader || answer[0] != kAnswerType || version.size() < 4 || encryption.isEmpty())
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

ServerProbe ProbeAddress(const addrinfo& peer, SteadyClock::time_point end) {
  const ProbeSocket socket(peer);
  const ServerPresence presence = Reach(socket, peer, end);
  if (presence != ServerPresence::kThere) return {.presence = presence};
  socket.Send(Question());
  const SteadyClock::time_point now = SteadyClock::now();
  std::optional<QByteArray> answer = Receive(socket, now + (end - now) / 2);
  if (!answer) {
    // Programs that read lines of text, such as web servers, wait for the end of one.
    socket.Send("\r\n\r\n");
    answer = Receive(socket, end);
  }
  if (!answer) return {.presence = ServerPresence::kSilent};
  return answer->isEmpty() ? ServerProbe{.presence = ServerPresence::kHungUp} : Understand(*answer);
}

}  // namespace

ServerProbe ProbeServer(const ServerAddress& address, std::chrono::milliseconds limit) {
  const SteadyClock::time_point end = SteadyClock::now() + limit;
  addrinfo wanted = {};
  wanted.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  const std::string port = std::to_string(address.port);
  if (::getaddrinfo(address.host.toStdString().c_str(), port.c_str(), &wanted, &found) != 0)
    return {.presence = ServerPresence::kNameUnknown};
  const AddressList addresses(found, ::freeaddrinfo);
  ServerProbe probe{.presence = ServerPresence::kPortClosed};
  for (const addrinfo* peer = found; peer != nullptr; peer = peer->ai_next) {
    const ServerProbe tried = ProbeAddress(*peer, end);
    if (tried.presence >= probe.presence) probe = tried;
    if (probe.presence == ServerPresence::kThere) break;
  }
  return probe;
}

}  // namespace qbx
