#include "database/odbc/server_probe.h"

#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <optional>

namespace qbx {
namespace {

using SteadyClock = std::chrono::steady_clock;
using AddressList = std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)>;

constexpr qsizetype kHeader = 8;  // type, status, length (2, high byte first), and four that do not matter here
constexpr char kAnswerType = 4;
constexpr qsizetype kOption = 5;  // mark, place and length, each high byte first
constexpr char kVersionMark = 0;
constexpr char kEncryptionMark = 1;
constexpr char kEndMark = '\xFF';

/// The question: a version of this side, and that encryption is left to the server.
QByteArray Question() {
  return QByteArray(
      "\x12\x01\x00\x1A\x00\x00\x01\x00"  // one packet of 26 bytes
      "\x00\x00\x0B\x00\x06"              // the version stands at 11, 6 bytes
      "\x01\x00\x11\x00\x01"              // encryption at 17, 1 byte
      "\xFF"
      "\x09\x00\x00\x00\x00\x00"
      "\x00",
      26);
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
  /// \return whether it became ready in time
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

/// One answer, whole; nothing when there is none.
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
    if (answer.size() >= kHeader)
      wanted =
          qMax(kHeader, static_cast<qsizetype>(static_cast<quint8>(answer[2]) * 256 + static_cast<quint8>(answer[3])));
  }
  return answer;
}

/// What an answer holds under a mark; empty when it has none.
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
  const QByteArray question = Question();
  ::send(socket.Descriptor(), question.constData(), static_cast<std::size_t>(question.size()), MSG_NOSIGNAL);
  const std::optional<QByteArray> answer = Receive(socket, end);
  return answer ? Understand(*answer) : ServerProbe{.presence = ServerPresence::kNoAnswer};
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
  ServerProbe probe;
  for (const addrinfo* peer = found; peer != nullptr; peer = peer->ai_next) {
    probe = ProbeAddress(*peer, end);
    if (probe.presence == ServerPresence::kThere) break;
  }
  return probe;
}

}  // namespace qbx
