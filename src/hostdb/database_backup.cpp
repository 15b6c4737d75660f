#include "hostdb/database_backup.h"

#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>
#include <memory>

namespace qbx {
namespace {

constexpr int kPagesAStep = 2000;
constexpr int kBusyWaitMs = 50;

using Database = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

Database Open(const QString& path, int flags) {
  sqlite3* database = nullptr;
  const int code = sqlite3_open_v2(path.toUtf8().constData(), &database, flags, nullptr);
  Database opened(database, &sqlite3_close);
  return code == SQLITE_OK ? std::move(opened) : Database(nullptr, &sqlite3_close);
}

/// Copies everything. \return the code of the last step: SQLITE_DONE when the copy is whole, SQLITE_OK when it was cancelled
int CopyPages(sqlite3* from, sqlite3* to, const std::function<bool()>& cancelled) {
  sqlite3_backup* backup = sqlite3_backup_init(to, "main", from, "main");
  if (backup == nullptr) return sqlite3_errcode(to);
  int code = SQLITE_OK;
  while (code == SQLITE_OK || code == SQLITE_BUSY || code == SQLITE_LOCKED) {
    code = cancelled() ? SQLITE_DONE : sqlite3_backup_step(backup, kPagesAStep);
    if (cancelled()) break;
    if (code == SQLITE_BUSY || code == SQLITE_LOCKED) sqlite3_sleep(kBusyWaitMs);
  }
  const int finished = sqlite3_backup_finish(backup);
  if (cancelled()) return SQLITE_OK;
  return code == SQLITE_DONE && finished == SQLITE_OK ? SQLITE_DONE : code;
}

QString Reason(int code) {
  return QString::fromUtf8(sqlite3_errstr(code));
}

}  // namespace

HostDatabaseProblem CopyHostDatabase(const QString& path, const QString& target,
                                     const std::function<bool()>& cancelled) {
  if (QFileInfo(path).canonicalFilePath() == QFileInfo(target).canonicalFilePath() && QFileInfo::exists(target))
    return QStringLiteral("The database cannot be copied onto itself.");
  const QString unfinished = target + QStringLiteral(".part");
  QFile::remove(unfinished);
  int code = SQLITE_CANTOPEN;
  {
    const Database from = Open(path, SQLITE_OPEN_READONLY);
    if (!from) return QStringLiteral("The database file cannot be read: %1").arg(path);
    const Database to = Open(unfinished, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    if (to) code = CopyPages(from.get(), to.get(), cancelled);
  }
  if (code == SQLITE_DONE) {
    if (std::rename(QFile::encodeName(unfinished).constData(), QFile::encodeName(target).constData()) == 0)
      return std::nullopt;
    code = SQLITE_CANTOPEN;
  }
  QFile::remove(unfinished);
  if (code == SQLITE_OK) return std::nullopt;
  return QStringLiteral("The copy could not be written to %1 (%2).").arg(target, Reason(code));
}

}  // namespace qbx
