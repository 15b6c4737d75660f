#include "hostdb/database_upgrade.h"

#include <sqlite3.h>
#include <unistd.h>

#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>
#include <algorithm>
#include <optional>

#include "database/embedded/errors.h"
#include "hostdb/database_backup.h"
#include "hostdb/installed_objects.h"
#include "hostdb/sqlite_file.h"

namespace qbx {
namespace {

enum Refusal { kNewerFile = 948, kNoRoom = 1105, kCannotWrite = 3906, kInUse = 5061, kUpgradeFailed = 5069 };

constexpr int kKeptCopies = 2;
constexpr int kLockWaitMs = 50;
constexpr int kLockWaits = 20;  // one second: another program may be just closing

/// What a host database says of itself.
struct FileState {
  int number = 0;      ///< 0: made before there were numbers
  QByteArray objects;  ///< the objects that were installed last, as ObjectsFingerprint()
};

int NumberOf(const EmbeddedSql& upgrade) {
  return QByteArray(upgrade.name).left(4).toInt();
}

int NewestOf(std::span<const EmbeddedSql> upgrades) {
  return upgrades.empty() ? 0 : NumberOf(upgrades.back());
}

/// Nothing for what is no host database, or cannot be read.
std::optional<FileState> ReadState(sqlite3* database) {
  try {
    SqliteStatement read(database, "SELECT File_Number, Objects_Fingerprint FROM _Version");
    if (!read.Step()) return std::nullopt;
    return FileState{static_cast<int>(read.IntegerAt(0)), read.TextAt(1)};
  } catch (const SqliteFailure&) {
    // Databases without a number had another column in its place.
  }
  try {
    SqliteStatement read(database, "SELECT Procedures_Version FROM _Version");
    return read.Step() ? std::optional<FileState>(FileState{}) : std::nullopt;
  } catch (const SqliteFailure&) {
    return std::nullopt;
  }
}

QString PathOf(sqlite3* database) {
  return QString::fromUtf8(sqlite3_db_filename(database, "main"));
}

QString NameOf(sqlite3* database) {
  return QFileInfo(PathOf(database)).completeBaseName();
}

[[noreturn]] void Refuse(sqlite3* database, Refusal reason, const QString& why) {
  const QString subject =
      reason == kNewerFile
          ? QStringLiteral("The database \"%1\" cannot be opened. ")
          : QStringLiteral("The database \"%1\" has to be brought up to date for this version of the program, but ");
  throw ServerError(reason, subject.arg(NameOf(database)) + why + QStringLiteral(" Nothing was changed."));
}

/// \throws DatabaseError when the file has a higher number than the newest upgrade
void RefuseNewer(sqlite3* database, const FileState& state, int newest) {
  if (state.number <= newest) return;
  const QString numbers =
      QStringLiteral("It has the number %1, and this version of the program knows numbers up to %2.")
          .arg(QString::number(state.number), QString::number(newest));
  Refuse(database, kNewerFile,
         QStringLiteral("A newer version of the program made it or brought it up to date. ") + numbers +
             QStringLiteral(" Install the newer version on this computer, too."));
}

/// Nobody else has the file while this lives. The database is out of write-ahead-log mode, since only then others are seen.
class SoleUse {
 public:
  explicit SoleUse(sqlite3* database) : database_(database) {
    // An upgrade takes the time it takes, and nobody waits for a lock here.
    sqlite3_progress_handler(database, 0, nullptr, nullptr);
    sqlite3_busy_timeout(database, 0);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_FKEY, -1, &foreignKeys_);
    ExecuteSql(database, "PRAGMA foreign_keys = OFF; PRAGMA locking_mode = EXCLUSIVE");
    // Two that begin at once keep the file from each other: one of them gives up first, and the other goes on.
    const int mostWaits = kLockWaits + static_cast<int>(::getpid() % kLockWaits);
    for (int waits = 0; !TakeFile(); ++waits) {
      if (waits == mostWaits) {
        GiveBack();
        Refuse(database, kInUse,
               QStringLiteral("another program has it open. Close every program that uses it, then try again."));
      }
      sqlite3_sleep(kLockWaitMs);
    }
  }
  ~SoleUse() { GiveBack(); }
  SoleUse(const SoleUse&) = delete;
  SoleUse& operator=(const SoleUse&) = delete;

 private:
  /// \return false while somebody else has it
  bool TakeFile() {
    for (const char* step : {"PRAGMA journal_mode = DELETE", "BEGIN EXCLUSIVE", "COMMIT"}) {
      const int code = sqlite3_exec(database_, step, nullptr, nullptr, nullptr);
      if (code == SQLITE_OK) continue;
      if ((code & 0xFF) == SQLITE_BUSY) return false;
      const SqliteFailure failure(database_);
      GiveBack();
      throw failure;
    }
    return true;
  }
  void GiveBack() {
    sqlite3_exec(database_, "PRAGMA locking_mode = NORMAL; PRAGMA journal_mode = WAL", nullptr, nullptr, nullptr);
    sqlite3_db_config(database_, SQLITE_DBCONFIG_ENABLE_FKEY, foreignKeys_, nullptr);
  }

  sqlite3* database_;
  int foreignKeys_ = 0;
};

QDir FolderOf(sqlite3* database) {
  return QFileInfo(PathOf(database)).dir();
}

void CopyBeforehand(sqlite3* database, int number) {
  const QDir folder = FolderOf(database);
  const QString path = PathOf(database);
  // The copy, and as much again for what the upgrade writes.
  const qint64 needed = 2 * QFileInfo(path).size();
  if (const qint64 room = QStorageInfo(folder).bytesAvailable(); room >= 0 && room < needed) {
    Refuse(database, kNoRoom,
           QStringLiteral("there is no room on the disk for the copy that is made first: %1 MB are needed in %2.")
               .arg(QString::number(needed / 1'000'000 + 1), folder.absolutePath()));
  }
  const QString copy = folder.filePath(QStringLiteral("%1.before-%2.db").arg(NameOf(database)).arg(number));
  QString problem;
  if (CopyOpenDatabase(database, copy, problem) != CopyOutcome::kCopied)
    Refuse(database, kNoRoom, QStringLiteral("it is copied first, and that failed. ") + problem);
}

void RemoveOldCopies(sqlite3* database) {
  const QString start = NameOf(database) + QStringLiteral(".before-");
  QDir folder = FolderOf(database);
  const auto number = [&start](const QString& file) { return file.mid(start.size()).section(u'.', 0, 0).toInt(); };
  QStringList copies;
  for (const QString& file : folder.entryList({QStringLiteral("*.db")}, QDir::Files))
    if (file.startsWith(start) && file == start + QString::number(number(file)) + QStringLiteral(".db")) copies += file;
  std::sort(copies.begin(), copies.end(), [&](const QString& a, const QString& b) { return number(a) > number(b); });
  for (qsizetype i = kKeptCopies; i < copies.size(); ++i)
    folder.remove(copies.at(i));
}

/// Runs the upgrades that the file lacks, if any, and renews the objects, in one transaction.
void BringUp(sqlite3* database, std::span<const EmbeddedSql> upgrades) {
  ExecuteSql(database, "BEGIN IMMEDIATE");
  try {
    // Another program may have been here since the first look.
    const FileState state = ReadState(database).value_or(FileState{});
    const int number = NewestOf(upgrades);
    RefuseNewer(database, state, number);
    std::vector<SchemaObject> aside = TakeObjectsAside(database);
    for (const EmbeddedSql& upgrade : upgrades)
      if (NumberOf(upgrade) > state.number) ExecuteSql(database, upgrade.text);
    PutObjectsBack(database, std::move(aside), number);
    SqliteStatement(database, "UPDATE _Version SET File_Number = ?, Objects_Fingerprint = ?")
        .Add(qint64{number})
        .Add(ObjectsFingerprint())
        .Run();
    ExecuteSql(database, "COMMIT");
  } catch (...) {
    if (sqlite3_get_autocommit(database) == 0) sqlite3_exec(database, "ROLLBACK", nullptr, nullptr, nullptr);
    throw;
  }
}

void Upgrade(sqlite3* database, std::span<const EmbeddedSql> upgrades) {
  if (sqlite3_db_readonly(database, "main") == 1)
    Refuse(database, kCannotWrite, QStringLiteral("its file cannot be written."));
  const SoleUse use(database);
  const int number = NewestOf(upgrades);
  if (const auto state = ReadState(database); state && state->number < number) CopyBeforehand(database, number);
  BringUp(database, upgrades);
  RemoveOldCopies(database);
}

}  // namespace

int NewestFileNumber() {
  return NewestOf(UpgradeFiles());
}

void KeepUpToDate(sqlite3* database) {
  KeepUpToDateWith(database, UpgradeFiles());
}

void KeepUpToDateWith(sqlite3* database, std::span<const EmbeddedSql> upgrades) {
  const std::optional<FileState> state = ReadState(database);
  if (!state) return;
  const int newest = NewestOf(upgrades);
  RefuseNewer(database, *state, newest);
  if (state->number == newest && state->objects == ObjectsFingerprint()) return;
  try {
    if (state->number < newest) {
      Upgrade(database, upgrades);
    } else if (sqlite3_db_readonly(database, "main") != 1) {
      BringUp(database, upgrades);
    }
  } catch (const SqliteFailure& failure) {
    Refuse(database, kUpgradeFailed, QStringLiteral("that failed: %1.").arg(QString::fromUtf8(failure.what())));
  }
}

}  // namespace qbx
