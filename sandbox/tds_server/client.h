// One client of the server, from its first byte to its last.

#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>

#include "database/embedded/engine.h"
#include "tds_server/channel.h"
#include "tds_server/faults.h"
#include "tds_server/login.h"
#include "tds_server/requests.h"

namespace qbx::tds {

// The server's numbers for a refused login.
inline constexpr int kLoginFailed = 18456;
inline constexpr int kCannotOpenDatabase = 4060;

/// What the clients of one server did.
struct Counters {
  std::atomic<int> connections = 0;
  std::atomic<int> logins = 0;
  std::atomic<int> encryptedLogins = 0;  ///< logins with the whole connection encrypted
  std::atomic<int> requests = 0;
  std::atomic<int> attentions = 0;
};

/// What all clients of a server share; outlives them.
struct ServerParts {
  EmbeddedEngine& engine;
  const TlsIdentity* identity = nullptr;  ///< null: the server cannot encrypt
  Faults faults = {};
  Counters counters = {};
  /// Called with each request, by many threads; may be empty.
  std::function<void(int client, const QString& request)> told = {};
};

/// Serves one connection. While one thread carries out the requests, another one reads, so that a cancelling is
/// noticed.
class Client {
 public:
  Client(int socket, int number, ServerParts& parts) : channel_(socket), number_(number), parts_(parts) {}

  /// Serves it until it ends; throws nothing.
  void Run();
  /// Ends the connection. May be called from any thread.
  void Shut();
  [[nodiscard]] bool IsOver() const { return over_; }

 private:
  [[nodiscard]] bool LogIn();
  [[nodiscard]] bool Negotiate(bool mayEncrypt);
  [[nodiscard]] std::unique_ptr<Session> OpenSession(const LoginMessage& login, Answer& answer);
  void RefuseDatabase(Answer& answer) const;
  static void RefuseLogin(const LoginMessage& login, Answer& answer);
  void AcceptLogin(const LoginMessage& login, Answer& answer);

  void Serve();
  void Read();
  void HandleAttentions();
  [[nodiscard]] std::optional<Message> NextRequest();
  void CarryOut(const Message& request, Requests& requests, ClientState& state);
  void AcknowledgeAttention();

  /// Carries out a fault.
  /// \throws RequestAbandoned when nothing may follow
  void Suffer(const Fault& fault, Answer& answer);
  void EndConnection(FaultKind kind);

  Channel channel_;
  int number_;
  ServerParts& parts_;
  QString database_;
  bool encryptsAll_ = false;
  std::unique_ptr<Session> session_;

  std::mutex mutex_;  // guards what follows, and keeps a late interruption away from the session
  std::condition_variable changed_;
  std::deque<Message> received_;
  bool attention_ = false;
  bool hanging_ = false;
  std::atomic<bool> over_ = false;
};

}  // namespace qbx::tds
