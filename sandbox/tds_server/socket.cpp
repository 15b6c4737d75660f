#include "tds_server/socket.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <iterator>

#include "tds_server/bytes.h"

namespace qbx::tds {

Socket::Socket(int handle) : handle_(handle), stop_(::eventfd(0, EFD_CLOEXEC)) {
  const int on = 1;
  ::setsockopt(handle_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof(on));
}

Socket::~Socket() {
  Close();
  ::close(stop_);
}

QByteArray Socket::Receive() {
  QByteArray bytes(0x10000, Qt::Uninitialized);
  for (;;) {
    pollfd waiting[] = {{handle_, POLLIN, 0}, {stop_, POLLIN, 0}};
    if (::poll(waiting, std::size(waiting), -1) < 0 && errno == EINTR) continue;
    if (waiting[1].revents != 0) return {};
    const ssize_t count = ::recv(handle_, bytes.data(), static_cast<std::size_t>(bytes.size()), 0);
    if (count < 0 && errno == EINTR) continue;
    bytes.truncate(count > 0 ? count : 0);
    return bytes;
  }
}

void Socket::Send(QByteArrayView bytes) {
  while (!bytes.isEmpty()) {
    const ssize_t count = ::send(handle_, bytes.data(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) throw ProtocolError("the other side is gone");
    bytes = bytes.sliced(count);
  }
}

void Socket::Shut() {
  if (!resets_ && handle_ >= 0) ::shutdown(handle_, SHUT_RDWR);
  ::eventfd_write(stop_, 1);
}

void Socket::Close() {
  if (handle_ >= 0) ::close(handle_);
  handle_ = -1;
}

void Socket::ResetAtEnd() {
  const linger now{.l_onoff = 1, .l_linger = 0};
  ::setsockopt(handle_, SOL_SOCKET, SO_LINGER, &now, sizeof(now));
  resets_ = true;
}

}  // namespace qbx::tds
