// A mail server and an SMS gateway that accept everything at once, so that only the sender is measured.

#pragma once

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace qbx::bench {

/// Listens on a free port of 127.0.0.1, with a thread for each connection. Only one connection sends at a time.
class LoopbackSink {
 public:
  enum class Protocol {
    kSmtp,  ///< accepts every message
    kHttp,  ///< answers every GET like a gateway that accepted a text and has plenty of credits left
  };

  explicit LoopbackSink(Protocol protocol);
  ~LoopbackSink();
  LoopbackSink(const LoopbackSink&) = delete;
  LoopbackSink& operator=(const LoopbackSink&) = delete;

  [[nodiscard]] int Port() const { return port_; }
  /// The number of messages or requests since the last call.
  [[nodiscard]] int TakeCount() { return count_.exchange(0); }

  /// Keeps what arrives while on: messages without dot-stuffing, or the targets of requests.
  void Keep(bool on) { keep_ = on; }
  [[nodiscard]] std::vector<std::string> TakeKept();

 private:
  void Serve();
  void Talk(int connection);
  void TalkSmtp(int connection);
  void TalkHttp(int connection);
  void Took(std::string text);

  Protocol protocol_;
  int listener_ = -1;
  int port_ = 0;
  std::vector<int> connections_;  // only the listening thread uses these two while it runs
  std::vector<std::thread> talks_;
  std::atomic<int> count_ = 0;
  std::atomic<bool> keep_ = false;
  std::vector<std::string> kept_;
  std::thread thread_;
};

}  // namespace qbx::bench
