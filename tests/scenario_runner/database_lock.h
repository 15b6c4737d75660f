// Somebody else who holds the host database.

#pragma once

#include <QString>
#include <memory>

namespace qbx::scenario {

/// Holds the write lock of a database file from a thread of its own, so that it can end while the program waits for it.
/// Reading goes on.
class DatabaseLock {
 public:
  DatabaseLock();
  ~DatabaseLock();
  DatabaseLock(const DatabaseLock&) = delete;
  DatabaseLock& operator=(const DatabaseLock&) = delete;

  /// Returns when the lock is held.
  /// \param milliseconds  after which it is released; 0: not before Release
  /// \throws ScenarioError when it cannot be had
  void Hold(const QString& file, int milliseconds);
  void Release();

 private:
  struct Holder;
  std::unique_ptr<Holder> holder_;
};

}  // namespace qbx::scenario
