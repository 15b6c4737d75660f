#include "database_lock.h"

#include <sqlite3.h>

#include <chrono>
#include <condition_variable>
#include <future>
#include <mutex>
#include <thread>

#include "scenario_error.h"

namespace qbx::scenario {

struct DatabaseLock::Holder {
  std::promise<bool> held;
  std::mutex mutex;
  std::condition_variable_any released;
  std::jthread thread;

  void Run(const std::stop_token& stop, const QByteArray& file, int milliseconds) {
    sqlite3* database = nullptr;
    sqlite3_open_v2(file.constData(), &database, SQLITE_OPEN_READWRITE, nullptr);
    sqlite3_busy_timeout(database, 5000);
    const bool locked = sqlite3_exec(database, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr) == SQLITE_OK;
    held.set_value(locked);
    if (locked) {
      std::unique_lock guard(mutex);
      if (milliseconds > 0) {
        released.wait_for(guard, stop, std::chrono::milliseconds(milliseconds), [] { return false; });
      } else {
        released.wait(guard, stop, [] { return false; });
      }
    }
    sqlite3_close(database);
  }
};

DatabaseLock::DatabaseLock() = default;
DatabaseLock::~DatabaseLock() = default;

void DatabaseLock::Hold(const QString& file, int milliseconds) {
  Release();
  holder_ = std::make_unique<Holder>();
  Holder& holder = *holder_;
  holder.thread = std::jthread([&holder, name = file.toUtf8(), milliseconds](const std::stop_token& stop) {
    holder.Run(stop, name, milliseconds);
  });
  if (holder.held.get_future().get()) return;
  Release();
  throw ScenarioError(QStringLiteral("The database could not be locked: %1").arg(file));
}

void DatabaseLock::Release() {
  holder_.reset();
}

}  // namespace qbx::scenario
