// A server on loopback that does exactly what a test tells it to, also what no decent server does.

#pragma once

#include <QByteArray>
#include <atomic>
#include <functional>
#include <thread>

namespace qbx::test {

/// One accepted connection.
class Peer {
 public:
  explicit Peer(int socket) : socket_(socket) {}

  /// Reads until the text came, or the other side closed. \return all that was read up to and with it
  QByteArray ReadTo(const QByteArray& end);
  void Write(const QByteArray& bytes) const;
  /// Waits until the other side closes. \return what it sent before that
  QByteArray ReadToEnd();

 private:
  bool ReadMore();

  int socket_;
  QByteArray buffer_;
};

/// Accepts connections one after the other in its own thread. Calls the script with each connection and its number
/// (from 1), and closes the connection when the script returns.
class ScriptServer {
 public:
  using Script = std::function<void(Peer&, int number)>;

  explicit ScriptServer(Script script);
  /// Ends the connection that is open.
  ~ScriptServer();
  ScriptServer(const ScriptServer&) = delete;
  ScriptServer& operator=(const ScriptServer&) = delete;

  [[nodiscard]] int Port() const { return port_; }
  [[nodiscard]] int Connections() const { return connections_; }
  /// Waits until so many connections were accepted and closed again.
  void WaitForClosed(int count) const;

 private:
  void Serve();

  Script script_;
  int listener_ = -1;
  int port_ = 0;
  std::atomic<int> connections_ = 0;
  std::atomic<int> closed_ = 0;
  std::atomic<int> open_ = -1;
  std::thread thread_;
};

}  // namespace qbx::test
