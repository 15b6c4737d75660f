// A slow server.

#pragma once

#include <chrono>
#include <thread>

#include "database/connection.h"
#include "database/session_wrapper.h"

namespace qbx::bench {

class SlowSession final : public SessionWrapper {
 public:
  SlowSession(std::unique_ptr<Session> inner, int delay) : SessionWrapper(std::move(inner)), delay_(delay) {}

 protected:
  void Ask(const std::function<void()>& call) override {
    std::this_thread::sleep_for(delay_);
    call();
  }

 private:
  std::chrono::milliseconds delay_;
};

/// \param delay  the additional time of every call, in milliseconds
[[nodiscard]] inline SessionFactory SlowSessions(SessionFactory inner, int delay) {
  return [inner = std::move(inner), delay](const ConnectionTarget& target, const Login& login, int timeout) {
    return std::make_unique<SlowSession>(inner(target, login, timeout), delay);
  };
}

}  // namespace qbx::bench
