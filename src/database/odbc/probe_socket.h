// A connection to a server that is only asked something before a login.

#pragma once

#include <netdb.h>

#include <QByteArray>
#include <chrono>
#include <memory>
#include <optional>

#include "database/odbc/server_address.h"

namespace qbx {

using ProbeEnd = std::chrono::steady_clock::time_point;
using AddressList = std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)>;

/// Every packet of a SQL Server begins with type, status, length (2 bytes, high byte first), and 4 bytes without use
/// here.
inline constexpr qsizetype kPacketHeader = 8;

/// The first message of a client, which needs no login: a version, and what the client wants to encrypt.
/// \param encryptAll  false: as the server wants
[[nodiscard]] QByteArray FirstMessage(bool encryptAll);

/// All network addresses of a server; null when its name is not known.
[[nodiscard]] AddressList AddressesOf(const ServerAddress& address);

/// How an attempt to connect ended.
enum class Reached { kConnected, kRefused, kNoAnswer };

class ProbeSocket {
 public:
  explicit ProbeSocket(const addrinfo& peer);
  ~ProbeSocket();
  ProbeSocket(const ProbeSocket&) = delete;
  ProbeSocket& operator=(const ProbeSocket&) = delete;

  /// \param end  of the attempt
  [[nodiscard]] Reached Connect(ProbeEnd end) const;
  void Send(const QByteArray& bytes) const;
  /// The bytes that came; empty when the other side ended the connection; nothing when the time is over.
  [[nodiscard]] std::optional<QByteArray> Receive(ProbeEnd end) const;

 private:
  [[nodiscard]] bool WaitFor(short what, ProbeEnd end) const;

  const addrinfo& peer_;
  int socket_;
};

/// The length of the packet that begins there, with its header.
/// \param received  at least kPacketHeader bytes
[[nodiscard]] qsizetype PacketLength(const QByteArray& received);

}  // namespace qbx
