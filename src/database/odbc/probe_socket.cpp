#include "database/odbc/probe_socket.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>

namespace qbx {

QByteArray FirstMessage(bool encryptAll) {
  constexpr std::array<char, 26> kPacket = {0x12,   1, 0,  26, 0, 0, 1, 0,  // one packet of 26 bytes
                                            0,      0, 11, 0,  6,           // version: place 11, 6 bytes
                                            1,      0, 17, 0,  1,           // encryption: place 17, 1 byte
                                            '\xFF', 9, 0,  0,  0, 0, 0, 0};
  QByteArray message(kPacket.data(), kPacket.size());
  message.back() = encryptAll ? 1 : 0;
  return message;
}

AddressList AddressesOf(const ServerAddress& address) {
  addrinfo wanted = {};
  wanted.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  const std::string port = std::to_string(address.port);
  if (::getaddrinfo(address.host.toStdString().c_str(), port.c_str(), &wanted, &found) != 0) found = nullptr;
  return {found, ::freeaddrinfo};
}

qsizetype PacketLength(const QByteArray& received) {
  const qsizetype length = static_cast<quint8>(received[2]) * 256 + static_cast<quint8>(received[3]);
  return qMax(kPacketHeader, length);
}

ProbeSocket::ProbeSocket(const addrinfo& peer)
    : peer_(peer), socket_(::socket(peer.ai_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}

ProbeSocket::~ProbeSocket() {
  if (socket_ >= 0) ::close(socket_);
}

Reached ProbeSocket::Connect(ProbeEnd end) const {
  if (::connect(socket_, peer_.ai_addr, peer_.ai_addrlen) == 0) return Reached::kConnected;
  if (errno == EINPROGRESS) {
    if (!WaitFor(POLLOUT, end)) return Reached::kNoAnswer;
    int failure = 0;
    socklen_t size = sizeof(failure);
    ::getsockopt(socket_, SOL_SOCKET, SO_ERROR, &failure, &size);
    if (failure == 0) return Reached::kConnected;
    errno = failure;
  }
  return errno == ECONNREFUSED ? Reached::kRefused : Reached::kNoAnswer;
}

void ProbeSocket::Send(const QByteArray& bytes) const {
  ::send(socket_, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
}

std::optional<QByteArray> ProbeSocket::Receive(ProbeEnd end) const {
  for (;;) {
    if (!WaitFor(POLLIN, end)) return std::nullopt;
    char bytes[4096];
    const ssize_t got = ::recv(socket_, bytes, sizeof(bytes), 0);
    if (got < 0 && (errno == EAGAIN || errno == EINTR)) continue;
    return got <= 0 ? QByteArray() : QByteArray(bytes, got);
  }
}

/// \return whether the socket became ready in time
bool ProbeSocket::WaitFor(short what, ProbeEnd end) const {
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
  pollfd polled = {socket_, what, 0};
  return left.count() > 0 && ::poll(&polled, 1, static_cast<int>(left.count())) > 0;
}

}  // namespace qbx
