// Another user who locks the host database.

#pragma once

#include <QString>
#include <memory>

namespace qbx::scenario {

/// Holds the write lock of a database file in its own thread, so that it can release the lock while the program waits
/// for it. Others can still read.
class DatabaseLock {
 public:
  DatabaseLock();
  ~DatabaseLock();
  DatabaseLock(const DatabaseLock&) = delete;
  DatabaseLock& operator=(const DatabaseLock&) = delete;

  /// Returns when the lock is held.
  /// \param milliseconds  the time until it is released; 0: only Release releases it
  /// \throws ScenarioError when it cannot get the lock
  void Hold(const QString& file, int milliseconds);
  void Release();

 private:
  struct Holder;
  std::unique_ptr<Holder> holder_;
};

}  // namespace qbx::scenario
