#include "hostdb/database_backup.h"

#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>
#include <cstdio>

#include "sqlite/sqlite_file.h"

namespace qbx {
namespace {

constexpr int kPagesAStep = 2000;
constexpr int kBusyWaitMs = 50;

/// Copies all pages. \return the code of the last step: SQLITE_DONE when the copy is complete
int CopyPages(sqlite3* from, sqlite3* to, const std::function<bool()>& cancelled) {
  sqlite3_backup* backup = sqlite3_backup_init(to, "main", from, "main");
  if (backup == nullptr) return sqlite3_errcode(to);
  int code = SQLITE_OK;
  while ((code == SQLITE_OK || code == SQLITE_BUSY || code == SQLITE_LOCKED) && !cancelled()) {
    code = sqlite3_backup_step(backup, kPagesAStep);
    if (code == SQLITE_BUSY || code == SQLITE_LOCKED) sqlite3_sleep(kBusyWaitMs);
  }
  const int finished = sqlite3_backup_finish(backup);
  return code == SQLITE_DONE && finished != SQLITE_OK ? finished : code;
}

bool SameFile(const QString& path, const QString& other) {
  return QFileInfo::exists(other) && QFileInfo(path).canonicalFilePath() == QFileInfo(other).canonicalFilePath();
}

/// Copies under a temporary name beside the target and renames the complete copy. It gives the copy the permissions of
/// the original, because a temporary file is readable by its maker only.
/// \param original  the file that is copied
/// \param copy      fills the file of that name and returns SQLITE_DONE when the copy is complete; may throw
///                  SqliteFailure
CopyOutcome WriteCopy(const QString& original, const QString& target,
                      const std::function<int(sqlite3* unfinished)>& copy, const std::function<bool()>& cancelled,
                      QString& problem) {
  QTemporaryFile unfinished(target + QStringLiteral(".XXXXXX"));
  if (!unfinished.open()) {
    problem = QStringLiteral("The copy could not be written to %1 (%2).").arg(target, unfinished.errorString());
    return CopyOutcome::kFailed;
  }
  unfinished.close();
  int code = SQLITE_OK;
  try {
    const SqliteFile to(unfinished.fileName(), SqliteMode::kExisting);
    code = copy(to.Handle());
  } catch (const SqliteFailure& failure) {
    code = failure.Code();
  }
  if (code == SQLITE_DONE) {
    QFile::setPermissions(unfinished.fileName(), QFile::permissions(original));
    const QByteArray from = QFile::encodeName(unfinished.fileName());
    if (std::rename(from.constData(), QFile::encodeName(target).constData()) == 0) {
      unfinished.setAutoRemove(false);
      return CopyOutcome::kCopied;
    }
  } else if (cancelled()) {
    return CopyOutcome::kCancelled;
  }
  problem = QStringLiteral("The copy could not be written to %1 (%2).")
                .arg(target, code == SQLITE_DONE ? QStringLiteral("the file cannot be replaced")
                                                 : QString::fromUtf8(sqlite3_errstr(code)));
  return CopyOutcome::kFailed;
}

}  // namespace

CopyOutcome CopyHostDatabase(const QString& path, const QString& target, const std::function<bool()>& cancelled,
                             QString& problem) {
  if (SameFile(path, target)) {
    problem = QStringLiteral("The database cannot be copied onto itself.");
    return CopyOutcome::kFailed;
  }
  const auto copy = [&](sqlite3* to) -> int {
    const SqliteFile from(path, SqliteMode::kReadOnly);
    // Reads the state of one moment. Otherwise every write would restart the copy, without end on a busy database.
    TryExecuteSql(from.Handle(), "BEGIN; SELECT 1 FROM sqlite_master LIMIT 1");
    return CopyPages(from.Handle(), to, cancelled);
  };
  return WriteCopy(path, target, copy, cancelled, problem);
}

CopyOutcome CopyOpenDatabase(sqlite3* database, const QString& target, QString& problem) {
  const auto never = [] { return false; };
  return WriteCopy(
      QString::fromUtf8(sqlite3_db_filename(database, "main")), target,
      [&](sqlite3* to) { return CopyPages(database, to, never); }, never, problem);
}

}  // namespace qbx
