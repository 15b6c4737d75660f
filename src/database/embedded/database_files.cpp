// The database files of a program folder, as the server's catalogue.

#include "database/embedded/database_files.h"

#include <sqlite3.h>

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <memory>
#include <optional>

#include "database/embedded/errors.h"

namespace qbx {
namespace {

constexpr int kBusyMilliseconds = 5000;

using Handle = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

Handle OpenFile(const QString& file) {
  sqlite3* handle = nullptr;
  sqlite3_open_v2(file.toUtf8().constData(), &handle, SQLITE_OPEN_READWRITE, nullptr);
  Handle database(handle, &sqlite3_close);
  sqlite3_busy_timeout(handle, kBusyMilliseconds);
  return database;
}

/// First column of the first row; nothing when there is no row. \throws DatabaseError
std::optional<QString> FirstText(sqlite3* database, const char* sql, std::initializer_list<QString> values = {}) {
  const auto failure = [database] { return ErrorFromSqlite(database, sqlite3_extended_errcode(database), {}); };
  sqlite3_stmt* handle = nullptr;
  if (sqlite3_prepare_v2(database, sql, -1, &handle, nullptr) != SQLITE_OK) throw failure();
  const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement(handle, &sqlite3_finalize);
  int index = 0;
  for (const QString& value : values) {
    const QByteArray utf8 = value.toUtf8();
    sqlite3_bind_text(handle, ++index, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
  }
  const int step = sqlite3_step(handle);
  if (step == SQLITE_DONE) return std::nullopt;
  if (step != SQLITE_ROW) throw failure();
  return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(handle, 0)));
}

/// The same; nothing also when the statement fails.
std::optional<QString> TextOrNothing(sqlite3* database, const char* sql) {
  try {
    return FirstText(database, sql);
  } catch (const DatabaseError&) {
    return std::nullopt;
  }
}

}  // namespace

LoginCheck CheckLogin(sqlite3* database, const QString& user, const QString& password) {
  if (!FirstText(database, "SELECT 1 FROM sqlite_master WHERE type = 'table' AND lower(name) = '_logins'")) {
    return LoginCheck::kNoLogins;
  }
  const auto found =
      FirstText(database, "SELECT 1 FROM _Logins WHERE lower(Login) = lower(?1) AND Password = ?2 COLLATE BINARY",
                {user, password});
  return found ? LoginCheck::kAccepted : LoginCheck::kRefused;
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
  const Handle handle = OpenFile(file);
  if (!TextOrNothing(handle.get(), "SELECT count(*) FROM sqlite_master")) return QStringLiteral("SUSPECT");
  return StoredStatus(handle.get());
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
  const Handle handle = OpenFile(file);
  const QString sql =
      QStringLiteral(
          "BEGIN IMMEDIATE; CREATE TABLE IF NOT EXISTS _Database_Status(Status text); DELETE FROM _Database_Status; INSERT INTO _Database_Status VALUES ('%1'); COMMIT")
          .arg(status);
  if (sqlite3_exec(handle.get(), sql.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
    throw ErrorFromSqlite(handle.get(), sqlite3_extended_errcode(handle.get()), {.database = database, .file = file});
}

bool DatabaseFiles::AcceptsLogin(const QString& user, const QString& password) const {
  bool refused = false;
  const QStringList files = QDir(folder_).entryList({QStringLiteral("*.db")}, QDir::Files);
  for (const QString& file : files) {
    const Handle handle = OpenFile(folder_ + file);
    try {
      const LoginCheck check = CheckLogin(handle.get(), user, password);
      if (check == LoginCheck::kAccepted) return true;
      refused = refused || check == LoginCheck::kRefused;
    } catch (const DatabaseError&) {
      // A damaged file must not keep everybody out of the others; opening it checks the login again.
    }
  }
  return !refused;
}

}  // namespace qbx
