// Ends what takes too long.

#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace qbx {

/// Calls `bark` once when the time is over that it was given. A driver's own time-out starts anew with every packet that
/// comes; this one does not. The thread starts with the first time that is given.
class Watchdog {
 public:
  /// \param bark  called on the watchdog's thread
  explicit Watchdog(std::function<void()> bark) : bark_(std::move(bark)) {}
  ~Watchdog();
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;

  void Watch(std::chrono::milliseconds time);
  /// After it returned, `bark` is neither called nor running.
  void Rest();

 private:
  using Time = std::chrono::steady_clock::time_point;

  void Serve();

  std::function<void()> bark_;
  std::mutex mutex_;
  std::condition_variable wake_;
  std::optional<Time> end_;      // of what is watched
  std::optional<Time> wakesAt_;  // the thread looks by itself then
  bool ending_ = false;
  std::thread thread_;
};

}  // namespace qbx
