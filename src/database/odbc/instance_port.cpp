#include "database/odbc/instance_port.h"

#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QStringList>
#include <cerrno>
#include <future>
#include <memory>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "database/database_error.h"
#include "database/pump_interval.h"
#include "util/text.h"

namespace qbx {
namespace {

using SteadyClock = std::chrono::steady_clock;
using Addresses = std::shared_ptr<addrinfo>;

constexpr auto kAskAgain = std::chrono::milliseconds(500);
constexpr char kQuestion = 4;  // "which port has the instance of this name?"
constexpr char kAnswer = 5;
constexpr qsizetype kAnswerHeader = 3;         // kAnswer and the length, low byte first
constexpr std::size_t kLongestAnswer = 65536;  // more than a datagram holds
constexpr int kNoNetwork = -1;                 // the instance accepts no connections over the network

[[noreturn]] void Fail(int number, const QString& text) {
  throw DatabaseError(number, text, {{0, QString(), text}});
}

/// The time left for a search. Keeps the caller's pump going meanwhile.
class Waiting {
 public:
  explicit Waiting(const InstanceSearch& search) : search_(search), end_(SteadyClock::now() + search.limit) {}

  /// \return whether there is time left
  /// \throws DatabaseError  when the search was cancelled
  [[nodiscard]] bool GoesOn() const {
    if (search_.pump) search_.pump();
    if (search_.cancelled && search_.cancelled())
      Fail(kCommandCancelled, QStringLiteral("Operation cancelled by user"));
    return SteadyClock::now() < end_;
  }

 private:
  const InstanceSearch& search_;
  SteadyClock::time_point end_;
};

/// A datagram socket that receives from one computer only.
class Datagrams {
 public:
  explicit Datagrams(const addrinfo& peer)
      : socket_(::socket(peer.ai_family, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
    if (socket_ >= 0 && ::connect(socket_, peer.ai_addr, peer.ai_addrlen) != 0) Close();
  }
  Datagrams(Datagrams&& other) noexcept : socket_(std::exchange(other.socket_, -1)) {}
  Datagrams& operator=(Datagrams&& other) noexcept {
    std::swap(socket_, other.socket_);
    return *this;
  }
  ~Datagrams() { Close(); }

  [[nodiscard]] int Descriptor() const { return socket_; }
  [[nodiscard]] bool IsOpen() const { return socket_ >= 0; }
  void Send(const QByteArray& bytes) {
    if (IsOpen() && ::send(socket_, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL) < 0)
      CloseUnlessBusy();
  }
  /// Receives one datagram, if there is one. Closes the socket when nobody listens at the port.
  std::optional<QByteArray> Receive() {
    QByteArray bytes(kLongestAnswer, Qt::Uninitialized);
    const ssize_t length = ::recv(socket_, bytes.data(), kLongestAnswer, 0);
    if (length >= 0) return bytes.left(length);
    CloseUnlessBusy();
    return std::nullopt;
  }

 private:
  void CloseUnlessBusy() {
    if (errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR && errno != ENOBUFS) Close();
  }
  void Close() {
    if (socket_ >= 0) ::close(std::exchange(socket_, -1));
  }

  int socket_;
};

Addresses LookUp(const std::string& host, const std::string& port) {
  addrinfo wanted = {};
  wanted.ai_socktype = SOCK_DGRAM;
  addrinfo* found = nullptr;
  if (::getaddrinfo(host.c_str(), port.c_str(), &wanted, &found) != 0) return nullptr;
  return {found, ::freeaddrinfo};
}

/// The addresses of a host; null when it has none, or the look-up takes too long.
Addresses AddressesOf(const QString& host, int port, const Waiting& waiting) {
  std::promise<Addresses> promise;
  std::future<Addresses> found = promise.get_future();
  std::thread([promise = std::move(promise), host = host.toStdString(), port = std::to_string(port)]() mutable {
    promise.set_value(LookUp(host, port));
  }).detach();
  while (found.wait_for(kPumpInterval) != std::future_status::ready) {
    if (!waiting.GoesOn()) return nullptr;
  }
  return found.get();
}

/// The port of an instance in an answer, which has a list "key;value;key;value;;" for each instance.
/// \return kNoNetwork for an instance without a port; nothing when the bytes are no answer or lack the instance
std::optional<int> PortInAnswer(const QByteArray& answer, const QString& instance) {
  if (answer.size() < kAnswerHeader || answer[0] != kAnswer) return std::nullopt;
  const int length = static_cast<quint8>(answer[1]) + 256 * static_cast<quint8>(answer[2]);
  if (answer.size() < kAnswerHeader + length) return std::nullopt;
  const QStringList words = QString::fromUtf8(answer.mid(kAnswerHeader, length)).split(u';');
  bool isOurs = false;
  int port = kNoNetwork;
  for (qsizetype at = 0; at + 1 < words.size();) {
    const QString& key = words[at];
    const QString& value = words[at + 1];
    if (EqualsNoCase(key, QStringLiteral("InstanceName"))) isOurs = EqualsNoCase(value, instance);
    if (key == QLatin1String("tcp")) {
      const int number = value.toUShort();  // 0: no number of a port
      port = number > 0 ? number : kNoNetwork;
    }
    if (key.isEmpty() && isOurs) return port;
    if (key.isEmpty()) port = kNoNetwork;
    at += key.isEmpty() ? 1 : 2;
  }
  return isOurs ? std::optional(port) : std::nullopt;
}

/// Asks all addresses of the host, and takes the first answer that lists the instance.
/// \return kNoNetwork for an instance without a port; nothing when the time is over, or nobody listens
std::optional<int> AskForPort(const addrinfo* first, const QString& instance, const Waiting& waiting) {
  const QByteArray question = kQuestion + instance.toUtf8() + '\0';
  std::vector<Datagrams> sockets;
  for (const addrinfo* address = first; address != nullptr; address = address->ai_next)
    sockets.emplace_back(*address);
  SteadyClock::time_point nextQuestion = SteadyClock::now();
  do {
    if (SteadyClock::now() >= nextQuestion) {
      for (Datagrams& socket : sockets)
        socket.Send(question);
      nextQuestion += kAskAgain;
    }
    std::erase_if(sockets, [](const Datagrams& socket) { return !socket.IsOpen(); });
    std::vector<pollfd> polled;
    polled.reserve(sockets.size());
    for (const Datagrams& socket : sockets)
      polled.push_back({socket.Descriptor(), POLLIN, 0});
    if (polled.empty()) return std::nullopt;
    ::poll(polled.data(), polled.size(), static_cast<int>(kPumpInterval.count()));
    for (std::size_t index = 0; index < polled.size(); ++index) {
      if (polled[index].revents == 0) continue;
      const std::optional<QByteArray> answer = sockets[index].Receive();
      const std::optional<int> port = answer ? PortInAnswer(*answer, instance) : std::nullopt;
      if (port) return port;
    }
  } while (waiting.GoesOn());
  return std::nullopt;
}

int FindInstancePort(const ServerAddress& address, const InstanceSearch& search) {
  const Waiting waiting(search);
  const Addresses addresses = AddressesOf(address.host, search.port, waiting);
  if (!addresses)
    Fail(kUnspecifiedError,
         QStringLiteral("SQL Server does not exist or access denied. The computer %1 was not found on the network.")
             .arg(address.host));
  const std::optional<int> port = AskForPort(addresses.get(), address.instance, waiting);
  if (!port)
    Fail(
        kUnspecifiedError,
        QStringLiteral(
            "SQL Server does not exist or access denied. The computer %1 did not tell the port of an instance %2. Check how the instance is written. The service SQL Server Browser has to run there, and the firewall has to let UDP port %3 through. Or write the port in place of the instance: %1,PORT.")
            .arg(address.host, address.instance, QString::number(search.port)));
  if (*port == kNoNetwork)
    Fail(
        kUnspecifiedError,
        QStringLiteral(
            "SQL Server does not exist or access denied. The instance %2 of %1 accepts no connections over the network. TCP/IP has to be switched on for it.")
            .arg(address.host, address.instance));
  return *port;
}

}  // namespace

ServerAddress LocateServer(const QString& server, const InstanceSearch& search) {
  ServerAddress address = ServerAddress::Parse(server);
  if (address.port == 0) address.port = FindInstancePort(address, search);
  return address;
}

}  // namespace qbx
