// A mail server and an SMS gateway that take everything at once, so that what is measured is the sender.

#pragma once

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace qbx::bench {

/// Listens on a free port of 127.0.0.1. A connection has a thread of its own; messages come over one at a time.
class LoopbackSink {
 public:
  enum class Protocol {
    kSmtp,  ///< takes every message
    kHttp,  ///< answers every GET as the gateway answers a text that it took, with plenty of credits left
  };

  explicit LoopbackSink(Protocol protocol);
  ~LoopbackSink();
  LoopbackSink(const LoopbackSink&) = delete;
  LoopbackSink& operator=(const LoopbackSink&) = delete;

  [[nodiscard]] int Port() const { return port_; }
  /// Messages or requests taken since the last call.
  [[nodiscard]] int TakeCount() { return count_.exchange(0); }

  /// While on, what comes is kept: messages as they were before dot-stuffing, or the request targets.
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
  std::vector<int> connections_;  // these two belong to the listening thread while it lives
  std::vector<std::thread> talks_;
  std::atomic<int> count_ = 0;
  std::atomic<bool> keep_ = false;
  std::vector<std::string> kept_;
  std::thread thread_;
};

}  // namespace qbx::bench
