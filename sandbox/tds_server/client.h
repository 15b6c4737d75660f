// One client of the server, from its first word to its last.

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

// The server's numbers for a login that is refused.
inline constexpr int kLoginFailed = 18456;
inline constexpr int kCannotOpenDatabase = 4060;

/// What the clients of one server did, for who wants to know.
struct Counters {
  std::atomic<int> connections = 0;
  std::atomic<int> logins = 0;
  std::atomic<int> encryptedLogins = 0;  ///< those whose whole connection is encrypted
  std::atomic<int> requests = 0;
  std::atomic<int> attentions = 0;
};

/// What all clients of a server share; outlives them.
struct ServerParts {
  EmbeddedEngine& engine;
  const TlsIdentity* identity = nullptr;  ///< none: the server cannot encrypt
  Faults faults = {};
  Counters counters = {};
  std::function<void(int client, const QString& request)> told =
      {};  ///< of each request, by many threads; may be empty
};

/// Serves one connection. While a thread carries out the requests, another one reads, so that a cancelling is noticed.
class Client {
 public:
  Client(int socket, int number, ServerParts& parts) : channel_(socket), number_(number), parts_(parts) {}

  /// Serves it until it ends; throws nothing.
  void Run();
  /// From any thread: the connection ends.
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

  /// Does what a fault asks for.
  /// \throws RequestAbandoned where nothing may follow
  void Suffer(const Fault& fault, Answer& answer);
  void EndConnection(FaultKind kind);

  Channel channel_;
  int number_;
  ServerParts& parts_;
  QString database_;
  bool encryptsAll_ = false;
  std::unique_ptr<Session> session_;

  std::mutex mutex_;  // what follows, and the session against an interruption that comes too late
  std::condition_variable changed_;
  std::deque<Message> received_;
  bool attention_ = false;
  bool hanging_ = false;
  std::atomic<bool> over_ = false;
};

}  // namespace qbx::tds
