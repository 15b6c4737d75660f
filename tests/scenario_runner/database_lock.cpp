#include "database_lock.h"

#include <chrono>
#include <condition_variable>
#include <future>
#include <mutex>
#include <optional>
#include <thread>

#include "scenario_error.h"
#include "sqlite/sqlite_file.h"

namespace qbx::scenario {

struct DatabaseLock::Holder {
  std::promise<bool> held;
  std::mutex mutex;
  std::condition_variable_any released;
  std::jthread thread;

  void Run(const std::stop_token& stop, const QString& file, int milliseconds) {
    std::optional<SqliteFile> database;
    try {
      database.emplace(file, SqliteMode::kExisting);
      ExecuteSql(database->Handle(), "PRAGMA busy_timeout = 5000; BEGIN EXCLUSIVE");
    } catch (const SqliteFailure&) {
      held.set_value(false);
      return;
    }
    held.set_value(true);
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

void DatabaseLock::Hold(const QString& file, int milliseconds) {
  Release();
  holder_ = std::make_unique<Holder>();
  Holder& holder = *holder_;
  holder.thread = std::jthread(
      [&holder, file, milliseconds](const std::stop_token& stop) { holder.Run(stop, file, milliseconds); });
  if (holder.held.get_future().get()) return;
  Release();
  throw ScenarioError(QStringLiteral("The database could not be locked: %1").arg(file));
}

void DatabaseLock::Release() {
  holder_.reset();
}

}  // namespace qbx::scenario
