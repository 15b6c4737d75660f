// Ends a call that takes too long.

#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace qbx {

/// Calls `bark` once when a time is over. A driver's own time-out starts again with each packet; this one does not. The
/// thread starts with the first call of Watch.
class Watchdog {
 public:
  /// \param bark  called on the watchdog's thread
  explicit Watchdog(std::function<void()> bark) : bark_(std::move(bark)) {}
  ~Watchdog();
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;

  /// Starts to watch, in place of what was watched before.
  /// \param time  from now until `bark`
  void Watch(std::chrono::milliseconds time);
  /// Stops watching. When it returns, `bark` is not running and will not be called.
  void Rest();

 private:
  using Time = std::chrono::steady_clock::time_point;

  void Serve();

  std::function<void()> bark_;
  std::mutex mutex_;
  std::condition_variable wake_;
  std::optional<Time> end_;      // when to bark
  std::optional<Time> wakesAt_;  // when the sleeping thread wakes by itself
  bool ending_ = false;
  std::thread thread_;
};

}  // namespace qbx
