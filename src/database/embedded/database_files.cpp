#include "database/embedded/database_files.h"

#include <sqlite3.h>

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <optional>

#include "database/embedded/errors.h"

namespace qbx {
namespace {

constexpr int kBusyMilliseconds = 5000;

/// \throws SqliteFailure
SqliteFile OpenFile(const QString& path) {
  SqliteFile file(path, SqliteMode::kExisting);
  sqlite3_busy_timeout(file.Handle(), kBusyMilliseconds);
  return file;
}

/// First column of the first row; nothing when there is no row. \throws SqliteFailure
std::optional<QString> FirstText(sqlite3* database, const char* sql, std::initializer_list<QString> values = {}) {
  SqliteStatement statement(database, sql);
  for (const QString& value : values)
    statement.Add(value.toStdString());
  if (!statement.Step()) return std::nullopt;
  return QString::fromUtf8(statement.TextAt(0));
}

/// The same; also nothing when the statement fails.
std::optional<QString> TextOrNothing(sqlite3* database, const char* sql) {
  try {
    return FirstText(database, sql);
  } catch (const SqliteFailure&) {
    return std::nullopt;
  }
}

/// \throws SqliteFailure
LoginCheck CheckStoredLogin(sqlite3* database, const QString& user, const QString& password) {
  if (!FirstText(database, "SELECT 1 FROM sqlite_master WHERE type = 'table' AND lower(name) = '_logins'")) {
    return LoginCheck::kNoLogins;
  }
  const auto found =
      FirstText(database, "SELECT 1 FROM _Logins WHERE lower(Login) = lower(?1) AND Password = ?2 COLLATE BINARY",
                {user, password});
  return found ? LoginCheck::kAccepted : LoginCheck::kRefused;
}

}  // namespace

LoginCheck CheckLogin(sqlite3* database, const QString& user, const QString& password) {
  try {
    return CheckStoredLogin(database, user, password);
  } catch (const SqliteFailure& failure) {
    throw ErrorFromSqlite(failure, {});
  }
}

QString StoredStatus(sqlite3* database) {
  return TextOrNothing(database, "SELECT Status FROM _Database_Status").value_or(QStringLiteral("ONLINE")).toUpper();
}

DatabaseFiles::DatabaseFiles(const QString& folder) : folder_(folder) {
  if (!folder_.endsWith(QLatin1Char('/'))) folder_ += QLatin1Char('/');
}

bool DatabaseFiles::IsMaster(const QString& database) {
  return database.compare(QLatin1String("master"), Qt::CaseInsensitive) == 0;
}

bool DatabaseFiles::CanBeNamed(const QString& database) {
  if (database.isEmpty() || IsMaster(database) || database != database.trimmed()) return false;
  const auto forbidden = [](QChar character) { return QStringLiteral("/\\;]").contains(character); };
  return std::none_of(database.begin(), database.end(), forbidden);
}

QString DatabaseFiles::FileOf(const QString& database) const {
  if (!CanBeNamed(database)) return {};
  const QString wanted = database + QStringLiteral(".db");
  if (QFileInfo(folder_ + wanted).isFile()) return folder_ + wanted;
  const QStringList files = QDir(folder_).entryList({QStringLiteral("*.db")}, QDir::Files);
  for (const QString& file : files) {
    if (file.compare(wanted, Qt::CaseInsensitive) == 0) return folder_ + file;
  }
  return {};
}

QString DatabaseFiles::Status(const QString& database) const {
  if (IsMaster(database)) return QStringLiteral("ONLINE");
  const QString file = FileOf(database);
  if (file.isEmpty()) return {};
  try {
    const SqliteFile opened = OpenFile(file);
    ExecuteSql(opened.Handle(), "SELECT count(*) FROM sqlite_master");
    return StoredStatus(opened.Handle());
  } catch (const SqliteFailure&) {
    return QStringLiteral("SUSPECT");
  }
}

void DatabaseFiles::SetStatus(const QString& database, const QString& status) const {
  const QString file = FileOf(database);
  const auto refused = [&database] {
    return ServerError(
        5011,
        QStringLiteral(
            "User does not have permission to alter database '%1', the database does not exist, or the database is not in a state that allows access checks.")
            .arg(database));
  };
  if (file.isEmpty()) throw refused();
  const QString sql =
      QStringLiteral(
          "BEGIN IMMEDIATE; CREATE TABLE IF NOT EXISTS _Database_Status(Status text); DELETE FROM _Database_Status; INSERT INTO _Database_Status VALUES ('%1'); COMMIT")
          .arg(status);
  try {
    const SqliteFile opened = OpenFile(file);
    ExecuteSql(opened.Handle(), sql.toUtf8().constData());
  } catch (const SqliteFailure& failure) {
    throw ErrorFromSqlite(failure, {.database = database, .file = file});
  }
}

bool DatabaseFiles::AcceptsLogin(const QString& user, const QString& password) const {
  bool refused = false;
  const QStringList files = QDir(folder_).entryList({QStringLiteral("*.db")}, QDir::Files);
  for (const QString& file : files) {
    try {
      const SqliteFile opened = OpenFile(folder_ + file);
      const LoginCheck check = CheckStoredLogin(opened.Handle(), user, password);
      if (check == LoginCheck::kAccepted) return true;
      refused = refused || check == LoginCheck::kRefused;
    } catch (const SqliteFailure&) {
      // A damaged file must not lock everybody out of the other databases. Opening it checks the login again.
    }
  }
  return !refused;
}

}  // namespace qbx
