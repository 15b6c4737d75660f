// Reading and replacing small files that other processes use at the same time.

#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace qbx {

/// Holds a lock file against other processes for as long as it lives. The lock goes with its process, however that
/// ends; the file itself stays, empty.
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

/// \return the file's bytes, nothing when it cannot be read
[[nodiscard]] std::optional<QByteArray> ReadWholeFile(const QString& path);

/// Replaces a file as a whole: written to a temporary name beside it, then renamed. A failure leaves the file as it
/// was.
/// \return what went wrong; empty when it worked
[[nodiscard]] QString ReplaceFile(const QString& path, const QByteArray& bytes);

/// Why the name of a file may not be given to a new file: a device, a pipe or a socket has it, which a rename would destroy. A folder is
/// left to those who open the file.
/// \return the reason; empty when nothing is wrong
[[nodiscard]] QString NameProblem(const QString& path);

}  // namespace qbx
