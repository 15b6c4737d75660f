#include "script_server.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

namespace qbx::test {

bool Peer::ReadMore() {
  std::array<char, 4096> block;
  const ssize_t length = ::recv(socket_, block.data(), block.size(), 0);
  if (length > 0) buffer_.append(block.data(), length);
  return length > 0;
}

QByteArray Peer::ReadTo(const QByteArray& end) {
  while (!buffer_.contains(end)) {
    if (!ReadMore()) return std::exchange(buffer_, {});
  }
  const qsizetype length = buffer_.indexOf(end) + end.size();
  QByteArray read = buffer_.left(length);
  buffer_.remove(0, length);
  return read;
}

QByteArray Peer::ReadToEnd() {
  while (ReadMore())
    continue;
  return std::exchange(buffer_, {});
}

void Peer::Write(const QByteArray& bytes) const {
  (void)::send(socket_, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
}

ScriptServer::ScriptServer(Script script) : script_(std::move(script)) {
  listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof(address);
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  const bool good = ::bind(listener_, generic, length) == 0 && ::listen(listener_, 8) == 0 &&
                    ::getsockname(listener_, generic, &length) == 0;
  if (!good) ADD_FAILURE() << "no free port on loopback";
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { Serve(); });
}

ScriptServer::~ScriptServer() {
  ::shutdown(listener_, SHUT_RDWR);
  const int open = open_;
  if (open >= 0) ::shutdown(open, SHUT_RDWR);
  thread_.join();
  ::close(listener_);
}

void ScriptServer::WaitForClosed(int count) const {
  for (int closed = closed_; closed < count; closed = closed_)
    closed_.wait(closed);
}

void ScriptServer::Serve() {
  while (true) {
    const int accepted = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (accepted < 0) return;
    open_ = accepted;
    Peer peer(accepted);
    script_(peer, ++connections_);
    open_ = -1;
    ::close(accepted);
    ++closed_;
    closed_.notify_all();
  }
}

}  // namespace qbx::test
