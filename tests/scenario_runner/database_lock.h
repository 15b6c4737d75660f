// Another user who locks the host database.

#pragma once

#include <functional>
#include <memory>

namespace qbx::scenario {

/// Holds a lock of the host database in its own thread, so that it can release the lock while the program waits for it.
class DatabaseLock {
 public:
  DatabaseLock();
  ~DatabaseLock();
  DatabaseLock(const DatabaseLock&) = delete;
  DatabaseLock& operator=(const DatabaseLock&) = delete;

  /// Returns when the lock is held.
  /// \param lock          gets the lock; it is released when what this returns is destroyed
  /// \param milliseconds  the time until it is released; 0: only Release releases it
  /// \throws ScenarioError when it cannot get the lock
  void Hold(std::function<std::shared_ptr<void>()> lock, int milliseconds);
  void Release();

 private:
  struct Holder;
  std::unique_ptr<Holder> holder_;
};

}  // namespace qbx::scenario
