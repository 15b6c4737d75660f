#include "tds_server/server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <iterator>

namespace qbx::tds {
namespace {

/// Listens on loopback.
/// \param port  0: any free port, which is then written to it
int OpenListener(int& port) {
  const int handle = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const int on = 1;
  ::setsockopt(handle, SOL_SOCKET, SO_REUSEADDR, &on, sizeof(on));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<quint16>(port));
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  socklen_t size = sizeof(address);
  if (::bind(handle, generic, size) != 0 || ::listen(handle, SOMAXCONN) != 0 ||
      ::getsockname(handle, generic, &size) != 0) {
    ::close(handle);
    throw ProtocolError("the port cannot be had");
  }
  port = ntohs(address.sin_port);
  return handle;
}

}  // namespace

Server::Server(EmbeddedEngine& engine, int port, const TlsIdentity* identity)
    : parts_{.engine = engine, .identity = identity}, port_(port), stop_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  SetListening(true);
}

Server::~Server() {
  SetListening(false);
  EndConnections();
  ::close(stop_);
}

void Server::SetListening(bool on) {
  if (on == listening_.joinable()) return;
  if (on) {
    const int listener = OpenListener(port_);
    listening_ = std::thread([this, listener] { Accept(listener); });
  } else {
    ::eventfd_write(stop_, 1);
    listening_.join();
    eventfd_t taken = 0;
    ::eventfd_read(stop_, &taken);
  }
}

void Server::Accept(int listener) {
  for (;;) {
    pollfd waiting[] = {{listener, POLLIN, 0}, {stop_, POLLIN, 0}};
    ::poll(waiting, std::size(waiting), -1);
    if (waiting[1].revents != 0) break;
    const int socket = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket >= 0) Serve(socket);
  }
  ::close(listener);
}

void Server::Serve(int socket) {
  const std::lock_guard lock(mutex_);
  served_.remove_if([](Served& served) {
    if (!served.client.IsOver()) return false;
    served.thread.join();
    return true;
  });
  Served& served = served_.emplace_back(socket, ++clients_, parts_);
  served.thread = std::thread([&served] { served.client.Run(); });
}

void Server::EndConnections() {
  std::list<Served> ended;
  {
    const std::lock_guard lock(mutex_);
    ended.swap(served_);
  }
  for (Served& served : ended)
    served.client.Shut();
  for (Served& served : ended)
    served.thread.join();
}

}  // namespace qbx::tds
