#include "database/embedded/engine.h"

#include <sqlite3.h>

#include <QFileInfo>

#include "database/embedded/errors.h"
#include "database/embedded/functions.h"
#include "database/embedded/session.h"

namespace qbx {
namespace {

using SharedFiles = std::shared_ptr<const DatabaseFiles>;

void DatabasePropertyEx(sqlite3_context* context, int, sqlite3_value** arguments) {
  const auto text = [](sqlite3_value* value) {
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_value_text(value)));
  };
  const SharedFiles& files = *static_cast<SharedFiles*>(sqlite3_user_data(context));
  const QString status = text(arguments[1]).compare(QLatin1String("Status"), Qt::CaseInsensitive) == 0
                             ? files->Status(text(arguments[0]))
                             : QString();
  if (status.isEmpty()) return sqlite3_result_null(context);
  const QByteArray utf8 = status.toUtf8();
  sqlite3_result_text(context, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
}

void RegisterServerFunctions(sqlite3* database, const SharedFiles& files) {
  sqlite3_create_function_v2(database, "DatabasePropertyEx", 2, SQLITE_UTF8, new SharedFiles(files), DatabasePropertyEx,
                             nullptr, nullptr, [](void* data) { delete static_cast<SharedFiles*>(data); });
}

DatabaseError LoginFailed(const QString& user) {
  return ServerError(18456, QStringLiteral("Login failed for user '%1'.").arg(user));
}

QString ExistingFile(const DatabaseFiles& files, const QString& name) {
  QString file = files.FileOf(name);
  if (file.isEmpty()) {
    throw ServerError(
        4060, QStringLiteral("Cannot open database \"%1\" requested by the login. The login failed.").arg(name));
  }
  if (QFileInfo(file).size() == 0) throw ServerError(5171, NoDatabaseText(file));
  return file;
}

/// Sets up an opened file, and fails when it is no database.
void PrepareFile(SqliteDatabase& database) {
  database.Run("SELECT count(*) FROM sqlite_master");
  database.Run("PRAGMA journal_mode = WAL");
  database.Run("PRAGMA synchronous = FULL");
  // Kilobytes. With less, a query over tens of thousands of customers spills. More gains nothing, and thousands of
  // letters fill any size.
  database.Run("PRAGMA cache_size = -11000");
  database.Run("PRAGMA temp_store = MEMORY");
}

/// \throws DatabaseError when the file is no database, or the database refuses the login or is offline
void Admit(SqliteDatabase& database, const Login& login) {
  PrepareFile(database);
  if (CheckLogin(database.Handle(), login.user, login.password) == LoginCheck::kRefused) throw LoginFailed(login.user);
  if (StoredStatus(database.Handle()) == QLatin1String("OFFLINE")) {
    throw ServerError(942,
                      QStringLiteral("Database '%1' cannot be opened because it is offline.").arg(database.Name()));
  }
}

}  // namespace

bool IsEmbeddedServer(const QString& server) {
  const QString host = server.section(QLatin1Char('\\'), 0, 0).trimmed();
  return host.isEmpty() || host.compare(QLatin1String("embedded:"), Qt::CaseInsensitive) == 0;
}

EmbeddedEngine::EmbeddedEngine(const QString& programFolder, const Clock& clock, FileHook prepare)
    : files_(std::make_shared<const DatabaseFiles>(programFolder)), clock_(clock), prepare_(std::move(prepare)) {}

SessionFactory EmbeddedEngine::Factory() {
  return [this](const ConnectionTarget& target, const Login& login, int timeout) {
    return Connect(target, login, timeout);
  };
}

std::unique_ptr<Session> EmbeddedEngine::Connect(const ConnectionTarget& target, const Login& login,
                                                 int connectionTimeoutSeconds) {
  const bool master = DatabaseFiles::IsMaster(target.database);
  const QString file = master ? QStringLiteral(":memory:") : ExistingFile(*files_, target.database);
  std::shared_ptr<SqliteDatabase> database = Open(target.database, file, connectionTimeoutSeconds);
  if (master) {
    if (!files_->AcceptsLogin(login.user, login.password)) throw LoginFailed(login.user);
    return std::make_unique<EmbeddedSession>(std::move(database), files_);
  }
  Admit(*database, login);
  if (prepare_) {
    database.reset();
    prepare_(file);
    database = Open(target.database, file, connectionTimeoutSeconds);
    PrepareFile(*database);
  }
  return std::make_unique<EmbeddedSession>(std::move(database), files_);
}

std::shared_ptr<SqliteDatabase> EmbeddedEngine::Open(const QString& name, const QString& file,
                                                     int timeoutSeconds) const {
  auto database = std::make_shared<SqliteDatabase>(name, file, generation_);
  database->SetTimeout(timeoutSeconds);
  RegisterFunctions(database->Handle(), clock_);
  RegisterServerFunctions(database->Handle(), files_);
  return database;
}

}  // namespace qbx
