// The server: listens on loopback and serves each client in its own thread.

#pragma once

#include <list>
#include <mutex>
#include <thread>

#include "tds_server/client.h"

namespace qbx::tds {

/// Stands in for a SQL Server, in front of an engine, from construction to destruction.
///
///   EmbeddedEngine engine(folder, clock);
///   tds::Server server(engine);
///   // clients connect to 127.0.0.1, server.Port()
class Server {
 public:
  /// \param engine    must outlive the server
  /// \param port      0: any free port
  /// \param identity  for encryption; null: the server cannot encrypt. Must outlive the server.
  /// \throws ProtocolError when it cannot listen on the port
  explicit Server(EmbeddedEngine& engine, int port = 0, const TlsIdentity* identity = nullptr);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  [[nodiscard]] int Port() const { return port_; }
  [[nodiscard]] Faults& PlannedFaults() { return parts_.faults; }
  [[nodiscard]] const Counters& Counted() const { return parts_.counters; }

  /// Sets what is called with each request, on the client's thread. Call it before the first client connects.
  void OnRequest(std::function<void(int client, const QString& request)> told) { parts_.told = std::move(told); }

  /// Refuses new connections, or takes them again at the same port.
  void SetListening(bool on);
  /// Ends all open connections, as a restarted server does.
  void EndConnections();

 private:
  struct Served {
    Client client;
    std::thread thread = {};
    Served(int socket, int number, ServerParts& parts) : client(socket, number, parts) {}
  };

  void Accept(int listener);
  void Serve(int socket);

  ServerParts parts_;
  int port_ = 0;
  int stop_;
  std::thread listening_;
  std::mutex mutex_;
  std::list<Served> served_;
  int clients_ = 50;  // as on a server, which uses the first numbers itself
};

}  // namespace qbx::tds
