#include "hostdb/host_database.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <filesystem>

#include "hostdb/database_upgrade.h"
#include "hostdb/embedded_sql.h"
#include "hostdb/host_file.h"
#include "hostdb/installed_objects.h"

namespace qbx {

namespace {

QByteArray Line(const QByteArray& text, qsizetype from, qsizetype* next) {
  qsizetype end = text.indexOf('\n', from);
  if (end < 0) end = text.size();
  *next = end + 1;
  return text.mid(from, end - from).trimmed();
}

ProcedureFile TakeApart(const EmbeddedSql& file) {
  const QByteArray text(file.text);
  ProcedureFile procedure{QByteArray(file.name), {}, {}};
  qsizetype headerStart = -1;
  for (qsizetype at = 0, next = 0; at < text.size(); at = next) {
    const QByteArray line = Line(text, at, &next);
    if (headerStart < 0 && line.startsWith("CREATE PROCEDURE")) headerStart = at;
    if (headerStart < 0 || line != "AS") continue;
    procedure.header = text.mid(headerStart, at - headerStart).trimmed();
    procedure.body = text.mid(next).trimmed();
    break;
  }
  return procedure;
}

void ApplySchema(sqlite3* database, bool indexes) {
  for (const EmbeddedSql& file : SchemaFiles())
    if ((file.name == kIndexFile) == indexes) ExecuteSql(database, file.text);
}

void Build(const QString& path, const std::function<HostDatabaseProblem(sqlite3*)>& fill,
           HostDatabaseProblem* problem) {
  const SqliteFile file = OpenHostFile(path);
  sqlite3* const database = file.Handle();
  // Nobody sees this file before it is complete, so it needs no journal.
  ExecuteSql(database, "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; PRAGMA cache_size = -65536; BEGIN");
  ApplySchema(database, false);
  SqliteStatement(database, "INSERT INTO _Version VALUES (?, ?, ?, ?, ?)")
      .Add(qint64{kHostSchemaVersion})
      .Add(qint64{kHostModuleVersion})
      .Add(qint64{NewestFileNumber()})
      .Add(ObjectsFingerprint())
      .Add(qint64{ObjectsSet()})
      .Run();
  ExecuteSql(database, "INSERT INTO _Options (Options_Company) VALUES ('A')");
  PutObjectsBack(database, TakeObjectsAside(database), NewestFileNumber());
  if (fill && (*problem = fill(database))) return;
  ApplySchema(database, true);
  ExecuteSql(database, "COMMIT; PRAGMA journal_mode = WAL");
}

/// Makes sure that nobody has the database to be replaced open, and that no write-ahead log of it stays. The log would
/// be applied to the new file.
HostDatabaseProblem ClearTheWay(const QString& path) {
  try {
    const SqliteFile file = OpenHostFile(path);
    ExecuteSql(file.Handle(), "PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE; ROLLBACK");
  } catch (const SqliteFailure&) {
    const SqliteFile probe = OpenHostFile(path);
    if (TryExecuteSql(probe.Handle(), "BEGIN IMMEDIATE") != SQLITE_NOTADB)
      return QStringLiteral("The database %1 is in use. Close every program that uses it and try again.").arg(path);
  }
  QFile::remove(path + QStringLiteral("-wal"));
  QFile::remove(path + QStringLiteral("-shm"));
  return std::nullopt;
}

void FlushToDisk(const QString& path) {
  const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return;
  ::fsync(descriptor);
  ::close(descriptor);
}

HostDatabaseProblem MoveIntoPlace(const QString& from, const QString& to) {
  FlushToDisk(from);
  std::error_code error;
  std::filesystem::rename(QFile::encodeName(from).toStdString(), QFile::encodeName(to).toStdString(), error);
  if (error)
    return QStringLiteral("The database %1 could not be put in place: %2.")
        .arg(to, QString::fromStdString(error.message()));
  FlushToDisk(QFileInfo(to).absolutePath());
  return std::nullopt;
}

}  // namespace

HostDatabaseProblem CreateHostDatabase(const QString& path, ExistingFile existing,
                                       const std::function<HostDatabaseProblem(sqlite3*)>& fill) {
  if (existing == ExistingFile::kRefuse && QFileInfo::exists(path))
    return QStringLiteral("The database %1 is already there and was left as it is.").arg(path);
  if (IsNameOfCopy(path))
    return QStringLiteral("The database %1 was not made: names of this kind are for copies.").arg(path);
  const QString building = path + QStringLiteral(".%1.new").arg(QString::number(::getpid()));
  HostDatabaseProblem problem;
  try {
    QFile::remove(building);
    Build(building, fill, &problem);
    if (!problem && QFileInfo::exists(path)) problem = ClearTheWay(path);
    if (!problem) problem = MoveIntoPlace(building, path);
  } catch (const SqliteFailure& failure) {
    problem = QStringLiteral("The database %1 could not be made: %2.").arg(path, QString::fromUtf8(failure.what()));
  }
  if (problem) QFile::remove(building);
  return problem;
}

std::vector<ProcedureFile> BuiltInProcedures() {
  std::vector<ProcedureFile> procedures;
  for (const EmbeddedSql& file : ProcedureFiles())
    procedures.push_back(TakeApart(file));
  return procedures;
}

}  // namespace qbx
