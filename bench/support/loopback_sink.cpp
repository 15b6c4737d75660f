#include "loopback_sink.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <optional>
#include <string_view>
#include <utility>

#include "rounds.h"

namespace qbx::bench {
namespace {

/// Reads a connection up to a mark.
class Reader {
 public:
  explicit Reader(int connection) : connection_(connection) {}

  /// \return the bytes before the mark; nothing at the end of the connection
  std::optional<std::string> UpTo(std::string_view mark) {
    std::size_t searched = 0;
    for (;;) {
      const std::size_t at = buffer_.find(mark, searched);
      if (at != std::string::npos) {
        std::string text = buffer_.substr(0, at);
        buffer_.erase(0, at + mark.size());
        return text;
      }
      searched = buffer_.size() < mark.size() ? 0 : buffer_.size() - mark.size() + 1;
      char bytes[16384];
      const ssize_t count = ::recv(connection_, bytes, sizeof bytes, 0);
      if (count <= 0) return std::nullopt;
      buffer_.append(bytes, static_cast<std::size_t>(count));
    }
  }

 private:
  int connection_;
  std::string buffer_;
};

void Say(int connection, std::string_view text) {
  if (::send(connection, text.data(), text.size(), MSG_NOSIGNAL) < 0) return;
}

/// A message without its dot-stuffing.
std::string Unstuffed(std::string text) {
  for (std::size_t at = text.find("\r\n.."); at != std::string::npos; at = text.find("\r\n..", at + 3))
    text.erase(at + 2, 1);
  return text + "\r\n";
}

}  // namespace

LoopbackSink::LoopbackSink(Protocol protocol)
    : protocol_(protocol), listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* plain = reinterpret_cast<sockaddr*>(&address);
  if (::bind(listener_, plain, size) != 0 || ::listen(listener_, 4) != 0 ||
      ::getsockname(listener_, plain, &size) != 0) {
    Fail("the sink cannot listen");
  }
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { Serve(); });
}

LoopbackSink::~LoopbackSink() {
  ::shutdown(listener_, SHUT_RDWR);
  thread_.join();
  for (const int connection : connections_)
    ::shutdown(connection, SHUT_RDWR);
  for (std::thread& talk : talks_)
    talk.join();
  for (const int connection : connections_)
    ::close(connection);
  ::close(listener_);
}

void LoopbackSink::Serve() {
  for (;;) {
    const int connection = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (connection < 0) return;
    const int on = 1;
    ::setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    connections_.push_back(connection);
    talks_.emplace_back([this, connection] { Talk(connection); });
  }
}

void LoopbackSink::Talk(int connection) {
  if (protocol_ == Protocol::kSmtp)
    TalkSmtp(connection);
  else
    TalkHttp(connection);
  ::shutdown(connection, SHUT_RDWR);
}

void LoopbackSink::TalkSmtp(int connection) {
  Reader reader(connection);
  Say(connection, "220 sink\r\n");
  while (const std::optional<std::string> line = reader.UpTo("\r\n")) {
    const std::string_view word = std::string_view(*line).substr(0, 4);
    if (word == "EHLO") {
      Say(connection, "250-sink\r\n250 8BITMIME\r\n");
    } else if (word == "DATA") {
      Say(connection, "354 go on\r\n");
      std::optional<std::string> message = reader.UpTo("\r\n.\r\n");
      if (!message) return;
      Took(std::move(*message));
      Say(connection, "250 taken\r\n");
    } else if (word == "QUIT") {
      return Say(connection, "221 bye\r\n");
    } else {
      Say(connection, "250 fine\r\n");
    }
  }
}

void LoopbackSink::TalkHttp(int connection) {
  constexpr std::string_view kAnswer =
      "HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\nContent-Length: 28\r\n\r\n\"1\"|\"900000\"|\"4711\"|\"0\"|end|";
  Reader reader(connection);
  while (std::optional<std::string> head = reader.UpTo("\r\n\r\n")) {
    const std::size_t begin = head->find(' ') + 1;
    Took(head->substr(begin, head->find(' ', begin) - begin));
    Say(connection, kAnswer);
  }
}

void LoopbackSink::Took(std::string text) {
  if (keep_) kept_.push_back(protocol_ == Protocol::kSmtp ? Unstuffed(std::move(text)) : std::move(text));
  ++count_;
}

std::vector<std::string> LoopbackSink::TakeKept() {
  return std::exchange(kept_, {});
}

}  // namespace qbx::bench
