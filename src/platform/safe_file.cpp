#include "platform/safe_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QThread>

namespace qbx {

FileLock::FileLock(const QString& path, int timeout)
    : descriptor_(::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666)) {
  constexpr unsigned long kPause = 10;  // milliseconds between two tries
  const QDeadlineTimer deadline(timeout);
  while (descriptor_ >= 0 && ::flock(descriptor_, LOCK_EX | LOCK_NB) != 0) {
    if (deadline.hasExpired()) {
      ::close(descriptor_);
      descriptor_ = -1;
    } else {
      QThread::msleep(kPause);
    }
  }
}

FileLock::~FileLock() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

std::optional<QByteArray> ReadWholeFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  QByteArray bytes = file.readAll();
  if (file.error() != QFileDevice::NoError) return std::nullopt;
  return bytes;
}

QString ReplaceFile(const QString& path, const QByteArray& bytes) {
  QSaveFile file(path);
  if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit()) return {};
  return QStringLiteral("The file \"%1\" could not be written: %2.").arg(path, file.errorString());
}

QString NameProblem(const QString& path) {
  const QFileInfo there(path);
  if (!there.exists() || there.isFile() || there.isDir()) return {};
  return QStringLiteral("A device or a pipe has that name");
}

}  // namespace qbx
