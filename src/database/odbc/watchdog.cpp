#include "database/odbc/watchdog.h"

namespace qbx {

Watchdog::~Watchdog() {
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
  }
  wake_.notify_one();
  if (thread_.joinable()) thread_.join();
}

void Watchdog::Watch(std::chrono::milliseconds time) {
  std::unique_lock lock(mutex_);
  end_ = std::chrono::steady_clock::now() + time;
  if (!thread_.joinable()) thread_ = std::thread([this] { Serve(); });
  // A thread that will wake before the new end need not be woken now. This spares a wake-up for most statements.
  const bool inTime = wakesAt_ && *wakesAt_ <= *end_;
  lock.unlock();
  if (!inTime) wake_.notify_one();
}

void Watchdog::Rest() {
  const std::lock_guard lock(mutex_);
  end_.reset();
}

void Watchdog::Serve() {
  std::unique_lock lock(mutex_);
  while (!ending_) {
    if (end_ && *end_ <= std::chrono::steady_clock::now()) {
      end_.reset();
      bark_();
      continue;
    }
    wakesAt_ = end_;
    if (end_)
      wake_.wait_until(lock, *end_);
    else
      wake_.wait(lock);
    wakesAt_.reset();
  }
}

}  // namespace qbx
