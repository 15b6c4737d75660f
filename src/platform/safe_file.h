// Reading and replacing small files that other processes use at the same time.

#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace qbx {

/// Holds a lock file against other processes as long as it lives. The system releases the lock when the process ends,
/// even by a crash. The empty file stays.
class FileLock {
 public:
  /// Waits for the lock.
  /// \param path     of the lock file; made when missing
  /// \param timeout  in milliseconds
  FileLock(const QString& path, int timeout);
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

  [[nodiscard]] bool Locked() const { return descriptor_ >= 0; }

 private:
  int descriptor_ = -1;
};

/// \return the file's bytes; nothing when it cannot be read
[[nodiscard]] std::optional<QByteArray> ReadWholeFile(const QString& path);

/// Replaces a whole file: writes a temporary file beside it, then renames that. A failure leaves the file unchanged.
/// \return what went wrong; empty when it worked
[[nodiscard]] QString ReplaceFile(const QString& path, const QByteArray& bytes);

/// Why a new file may not have this name: a device, a pipe or a socket has it, and the rename would destroy that. A
/// folder of this name is no problem here; opening it fails.
/// \return the reason; empty when there is none
[[nodiscard]] QString NameProblem(const QString& path);

}  // namespace qbx
