#include "hostdb/database_upgrade.h"

#include <sqlite3.h>

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QStorageInfo>
#include <algorithm>
#include <optional>

#include "database/embedded/errors.h"
#include "hostdb/database_backup.h"
#include "hostdb/host_file.h"
#include "hostdb/installed_objects.h"

namespace qbx {
namespace {

enum Refusal {
  kNewerFile = 948,
  kNoRoom = 1105,
  kCannotWrite = 3906,
  kInUse = 5061,
  kUpgradeFailed = 5069,
  kUnknownAge = 5120,
  kIsCopy = 5123
};

/// In the name of a copy, stands between the name of the database and its new number.
constexpr QLatin1String kCopyMark(".before-");
constexpr int kKeptCopies = 2;
constexpr int kShortestWaitMs = 20;
constexpr int kLongestWaitMs = 120;
constexpr int kMostWaits = 40;             // three seconds: another program may just be closing
constexpr int kMostWaitsForUpgrade = 400;  // half a minute: another program is upgrading the file
constexpr int kRenewalWaitMs = 2000;

/// The result of one attempt.
enum class Outcome { kDone, kUpgraded, kOthersHaveIt, kBeingUpgraded };

/// What a host database says about itself.
struct FileState {
  int number = 0;      ///< 0: made before databases had numbers
  QByteArray objects;  ///< the texts of the objects installed last, as ObjectsFingerprint()
  int set = 0;         ///< the set of these texts, as ObjectsSet()

  /// Whether the objects are older than this program's. A set with the same number but other texts counts as older: a
  /// developer made it.
  [[nodiscard]] bool HasOlderObjects() const {
    return set < ObjectsSet() || (set == ObjectsSet() && objects != ObjectsFingerprint());
  }
};

int NumberOf(const EmbeddedSql& upgrade) {
  return QByteArray(upgrade.name).left(4).toInt();
}

int NewestOf(std::span<const EmbeddedSql> upgrades) {
  return upgrades.empty() ? 0 : NumberOf(upgrades.back());
}

QString NameOf(const QString& path) {
  return QFileInfo(path).completeBaseName();
}

[[noreturn]] void Refuse(const QString& path, Refusal reason, const QString& why) {
  const QString subject =
      reason == kNewerFile || reason == kUnknownAge || reason == kIsCopy
          ? QStringLiteral("The database \"%1\" cannot be opened. ")
          : QStringLiteral("The database \"%1\" has to be brought up to date for this version of the program, but ");
  throw ServerError(reason, subject.arg(NameOf(path)) + why + QStringLiteral(" Nothing was changed."));
}

/// \throws DatabaseError when the file has a higher number than the newest upgrade
void RefuseNewer(const QString& path, const FileState& state, int newest) {
  if (state.number <= newest) return;
  const QString numbers =
      QStringLiteral("It has the number %1, and this version of the program knows numbers up to %2.")
          .arg(QString::number(state.number), QString::number(newest));
  Refuse(path, kNewerFile,
         QStringLiteral("A newer version of the program made it or brought it up to date. ") + numbers +
             QStringLiteral(" Install the newer version on this computer, too."));
}

/// Reads one row. \return nothing when the table or a column is missing
std::optional<FileState> ReadStateWith(const QString& path, sqlite3* database, const char* sql) {
  try {
    SqliteStatement read(database, sql);
    if (read.Step()) {
      return FileState{static_cast<int>(read.IntegerAt(0)), read.TextAt(1), static_cast<int>(read.IntegerAt(2))};
    }
  } catch (const SqliteFailure& failure) {
    if (!failure.IsMissingObject()) throw;
    return std::nullopt;
  }
  Refuse(path, kUnknownAge, QStringLiteral("How old it is is not known, since its table _Version is empty."));
}

/// Nothing when this is no host database.
/// \throws SqliteFailure when it cannot be read, DatabaseError when it does not say its number
std::optional<FileState> ReadState(const QString& path, sqlite3* database) {
  // An older database has fewer of the columns.
  for (const char* sql : {"SELECT File_Number, Objects_Fingerprint, Objects_Set FROM _Version",
                          "SELECT File_Number, Objects_Fingerprint, 0 FROM _Version",
                          "SELECT 0, NULL, 0, Procedures_Version FROM _Version"}) {
    if (auto state = ReadStateWith(path, database, sql)) return state;
  }
  return std::nullopt;
}

/// While it exists and `Has()`, nobody else has the file. It takes the database out of write-ahead-log mode, in which
/// other users cannot be noticed.
class SoleUse {
 public:
  /// Tries once. \throws SqliteFailure when it fails although nobody else has the file
  explicit SoleUse(sqlite3* database) : database_(database) {
    ExecuteSql(database, "PRAGMA locking_mode = EXCLUSIVE");
    try {
      ExecuteSql(database, "PRAGMA journal_mode = DELETE; BEGIN EXCLUSIVE; COMMIT");
      has_ = true;
    } catch (const SqliteFailure& failure) {
      if (!failure.IsBusy()) throw;
    }
  }
  ~SoleUse() { TryExecuteSql(database_, "PRAGMA locking_mode = NORMAL; PRAGMA journal_mode = WAL"); }
  SoleUse(const SoleUse&) = delete;
  SoleUse& operator=(const SoleUse&) = delete;

  [[nodiscard]] bool Has() const { return has_; }

 private:
  sqlite3* database_;
  bool has_ = false;
};

QDir FolderOf(const QString& path) {
  return QFileInfo(path).dir();
}

void CopyBeforehand(const QString& path, sqlite3* database, int number) {
  const QDir folder = FolderOf(path);
  // Room for the copy, and the same again for what the upgrade writes.
  const qint64 needed = 2 * QFileInfo(path).size();
  if (const qint64 room = QStorageInfo(folder).bytesAvailable(); room >= 0 && room < needed) {
    Refuse(path, kNoRoom,
           QStringLiteral("there is no room on the disk for the copy that is made first: %1 MB are needed in %2.")
               .arg(QString::number(needed / 1'000'000 + 1), folder.absolutePath()));
  }
  const QString copy = folder.filePath(NameOf(path) + kCopyMark + QString::number(number) + QStringLiteral(".db"));
  QString problem;
  if (CopyOpenDatabase(database, copy, problem) != CopyOutcome::kCopied)
    Refuse(path, kNoRoom, QStringLiteral("it is copied first, and that failed. ") + problem);
}

void RemoveOldCopies(const QString& path) {
  const QString start = NameOf(path) + kCopyMark;
  QDir folder = FolderOf(path);
  const auto number = [&start](const QString& file) { return file.mid(start.size()).section(u'.', 0, 0).toInt(); };
  QStringList copies;
  for (const QString& file : folder.entryList({QStringLiteral("*.db")}, QDir::Files))
    if (file.startsWith(start) && file == start + QString::number(number(file)) + QStringLiteral(".db")) copies += file;
  std::sort(copies.begin(), copies.end(), [&](const QString& a, const QString& b) { return number(a) > number(b); });
  for (qsizetype i = kKeptCopies; i < copies.size(); ++i)
    folder.remove(copies.at(i));
}

/// Runs the missing upgrades and renews the objects, in one transaction.
void BringUp(const QString& path, sqlite3* database, std::span<const EmbeddedSql> upgrades) {
  ExecuteSql(database, "BEGIN IMMEDIATE");
  try {
    // Another program may have upgraded the file since the first look.
    const FileState state = ReadState(path, database).value_or(FileState{});
    const int number = NewestOf(upgrades);
    RefuseNewer(path, state, number);
    if (state.number == number && !state.HasOlderObjects()) return ExecuteSql(database, "COMMIT");
    std::vector<SchemaObject> aside = TakeObjectsAside(database);
    for (const EmbeddedSql& upgrade : upgrades)
      if (NumberOf(upgrade) > state.number) ExecuteSql(database, upgrade.text);
    PutObjectsBack(database, std::move(aside), number);
    SqliteStatement(database, "UPDATE _Version SET File_Number = ?, Objects_Fingerprint = ?, Objects_Set = ?")
        .Add(qint64{number})
        .Add(ObjectsFingerprint())
        .Add(qint64{ObjectsSet()})
        .Run();
    ExecuteSql(database, "COMMIT");
  } catch (...) {
    if (sqlite3_get_autocommit(database) == 0) TryExecuteSql(database, "ROLLBACK");
    throw;
  }
}

Outcome Upgrade(const QString& path, sqlite3* database, std::span<const EmbeddedSql> upgrades) {
  if (sqlite3_db_readonly(database, "main") == 1)
    Refuse(path, kCannotWrite, QStringLiteral("its file cannot be written."));
  const SoleUse use(database);
  if (!use.Has()) return Outcome::kOthersHaveIt;
  const int number = NewestOf(upgrades);
  if (const auto state = ReadState(path, database); state && state->number < number)
    CopyBeforehand(path, database, number);
  BringUp(path, database, upgrades);
  RemoveOldCopies(path);
  return Outcome::kUpgraded;
}

/// Renews the objects. When somebody else writes, or the file cannot be written, a later start does it.
void Renew(const QString& path, sqlite3* database, std::span<const EmbeddedSql> upgrades) {
  if (sqlite3_db_readonly(database, "main") == 1) return;
  sqlite3_busy_timeout(database, kRenewalWaitMs);
  try {
    BringUp(path, database, upgrades);
  } catch (const SqliteFailure& failure) {
    if (!failure.IsBusy()) throw;
  }
}

/// One attempt, on a connection that is closed at its end.
Outcome TryToKeepUp(const QString& path, std::span<const EmbeddedSql> upgrades) {
  const SqliteFile file = OpenHostFile(path);
  sqlite3* const database = file.Handle();
  std::optional<FileState> state;
  try {
    state = ReadState(path, database);
  } catch (const SqliteFailure& failure) {
    if (failure.IsBusy()) return Outcome::kBeingUpgraded;
    Refuse(path, kUnknownAge,
           QStringLiteral("How old it is could not be read: %1.").arg(QString::fromUtf8(failure.what())));
  }
  if (!state) return Outcome::kDone;
  if (IsNameOfCopy(path)) {
    const QString why = QStringLiteral("It is a copy from before an upgrade. To use it, give its file another name.");
    Refuse(path, kIsCopy, why);
  }
  const int newest = NewestOf(upgrades);
  RefuseNewer(path, *state, newest);
  if (state->number < newest) return Upgrade(path, database, upgrades);
  if (state->HasOlderObjects()) Renew(path, database, upgrades);
  return Outcome::kDone;
}

}  // namespace

bool IsNameOfCopy(const QString& path) {
  static const QRegularExpression kEnding(QRegularExpression::escape(QString(kCopyMark)) + QStringLiteral("[0-9]+$"));
  return kEnding.match(NameOf(path)).hasMatch();
}

int NewestFileNumber() {
  return NewestOf(UpgradeFiles());
}

bool KeepUpToDate(const QString& path) {
  return KeepUpToDateWith(path, UpgradeFiles());
}

bool KeepUpToDateWith(const QString& path, std::span<const EmbeddedSql> upgrades) {
  try {
    // A program that waits has no connection: otherwise two that start at once could never get the file.
    int waits = 0;
    Outcome outcome = Outcome::kDone;
    for (; (outcome = TryToKeepUp(path, upgrades)) != Outcome::kDone; ++waits) {
      if (outcome == Outcome::kUpgraded) return true;
      if (outcome == Outcome::kOthersHaveIt && waits >= kMostWaits)
        Refuse(path, kInUse,
               QStringLiteral("another program has it open. Close every program that uses it, then try again."));
      if (waits >= kMostWaitsForUpgrade)
        Refuse(path, kInUse, QStringLiteral("another program is doing that already. Try again when it has finished."));
      sqlite3_sleep(QRandomGenerator::global()->bounded(kShortestWaitMs, kLongestWaitMs));
    }
  } catch (const SqliteFailure& failure) {
    Refuse(path, kUpgradeFailed, QStringLiteral("that failed: %1.").arg(QString::fromUtf8(failure.what())));
  }
  return false;
}

}  // namespace qbx
