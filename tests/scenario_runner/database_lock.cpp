#include "database_lock.h"

#include <chrono>
#include <condition_variable>
#include <future>
#include <mutex>
#include <thread>

#include "scenario_error.h"

namespace qbx::scenario {

struct DatabaseLock::Holder {
  std::promise<void> held;
  std::mutex mutex;
  std::condition_variable_any released;
  std::jthread thread;

  void Run(const std::stop_token& stop, const std::function<std::shared_ptr<void>()>& lock, int milliseconds) {
    std::shared_ptr<void> lockHeld;
    try {
      lockHeld = lock();
    } catch (const std::exception&) {
      held.set_exception(std::current_exception());
      return;
    }
    held.set_value();
    std::unique_lock guard(mutex);
    if (milliseconds > 0) {
      released.wait_for(guard, stop, std::chrono::milliseconds(milliseconds), [] { return false; });
    } else {
      released.wait(guard, stop, [] { return false; });
    }
  }
};

DatabaseLock::DatabaseLock() = default;
DatabaseLock::~DatabaseLock() = default;

void DatabaseLock::Hold(std::function<std::shared_ptr<void>()> lock, int milliseconds) {
  Release();
  holder_ = std::make_unique<Holder>();
  Holder& holder = *holder_;
  holder.thread = std::jthread([&holder, lock = std::move(lock), milliseconds](const std::stop_token& stop) {
    holder.Run(stop, lock, milliseconds);
  });
  try {
    holder.held.get_future().get();
  } catch (const std::exception& error) {
    const QString text = QString::fromUtf8(error.what());
    Release();
    throw ScenarioError(QStringLiteral("The database could not be locked: %1").arg(text));
  }
}

void DatabaseLock::Release() {
  holder_.reset();
}

}  // namespace qbx::scenario
