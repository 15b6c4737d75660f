#include "database/connect_database.h"

#include <array>

#include "database/database_service.h"
#include "util/text.h"

namespace qbx {

namespace {

constexpr int kCommandTimeout = 20;
constexpr int kFirstConnectionTimeout = 6;
constexpr int kMoreTimePerAttempt = 3;
constexpr int kConnectionTimeout = 15;
constexpr int kAttempts = 2;
constexpr int kComparedNameLength = 15;
constexpr int kLoggedPasswordLength = 2;

constexpr int kStart = static_cast<int>(ServiceAction::kStart);
constexpr int kStop = static_cast<int>(ServiceAction::kStop);
constexpr int kServiceWaits = 3;
constexpr int kWaitForStop = 1600;
constexpr int kWaitForStart = 1500;
constexpr int kWaitWhenRefused = 800;

const QLatin1String kMaster("master");
const QLatin1String kOnline("ONLINE");
const QLatin1String kSuspect("SUSPECT");

QString WithoutInstance(const QString& server) {
  return server.section(u'\\', 0, 0);
}

bool ByWayOfMaster(const ConnectSettings& settings) {
  return settings.companyCode == QLatin1String("A");
}

/// The folder part of a path, with its separator. The path may use "/" or "\".
QString FolderOf(const QString& path) {
  return path.left(qMax(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/')) + 1);
}

QString QuestionToBringOnline(const QString& status) {
  const QString reason =
      status.isEmpty()
          ? QStringLiteral("It may not have been configured or initialised yet, or may be offline.")
          : QStringLiteral(
                "It may be in the process of being restored, or has not been configured yet, or may be offline.");
  return QLatin1String("The database is not currently available.\r\r") + reason +
         QLatin1String("\r\rDo you want to attempt to bring the database back online?");
}

QString ReadableDescription(const DatabaseError& error) {
  QString description = error.Description();
  description.remove(QLatin1String("[DBNETLIB]"));
  return description.remove(QLatin1String("(Connect())."));
}

}  // namespace

std::optional<DatabaseError> NameProblem(const QString& server, const QString& database) {
  for (const QString& name : {server, database}) {
    if (!name.contains(u';') && !name.contains(u']')) continue;
    const QString text = QStringLiteral("\"%1\" cannot be the name of a server or a database.").arg(name);
    return DatabaseError(kUnusableSetting, text, {});
  }
  return std::nullopt;
}

QString ServerName(const QString& server, const ConnectSettings& settings) {
  const bool ownInstance = settings.settingsVersion2 && !settings.overrideAutomaticSettings;
  return ownInstance ? server + QLatin1String("\\QBX") : server;
}

QString BuildConnectionString(const QString& server, const QString& database, const ConnectSettings& settings) {
  return QLatin1String("Provider=SQLOLEDB;OLE DB Services = -2;Data Source=") + ServerName(server, settings) +
         QLatin1String(";Initial Catalog=") + database + u';';
}

bool IsLocalServer(const QString& server, const QString& computerName) {
  const QString host = WithoutInstance(server);
  return EqualsNoCase(host, QStringLiteral("localhost")) || host == QLatin1String("127.0.0.1") ||
         server.toUpper().left(kComparedNameLength) == computerName.toUpper().left(kComparedNameLength);
}

DatabaseConnector::DatabaseConnector(Connection& connection, Statements& statements, ServiceControl& services,
                                     Shell& shell, Diagnostics diagnostics, ConnectSettings settings)
    : connection_(connection),
      statements_(statements),
      services_(services),
      shell_(shell),
      diagnostics_(diagnostics),
      settings_(std::move(settings)) {}

bool DatabaseConnector::ConnectDatabase(const QString& server, const Login& login, const QString& database) {
  connection_.Close();
  flags_ = {.localServer = IsLocalServer(server, settings_.computerName)};
  Target target{server, login, database};
  connection_.SetCommandTimeout(kCommandTimeout);
  std::optional<DatabaseError> failure = NameProblem(server, database);
  if (!failure) failure = TryToOpen(target);
  if (!failure) {
    connection_.SetConnectionTimeout(kConnectionTimeout);
    if (EqualsNoCase(database, kMaster))
      ReadFileFolder();
    else if (ByWayOfMaster(settings_))
      failure = LeaveMaster(target);
  }
  if (!failure) return true;
  connection_.Close();
  connection_.CountAsNeverOpen();
  ReportFailure(server, login, *failure);
  return false;
}

std::optional<DatabaseError> DatabaseConnector::TryToOpen(Target& target) {
  const QString first = ByWayOfMaster(settings_) ? QString(kMaster) : target.database;
  const WaitForServer wait = statements_.BeginWaiting(MayCancel::kYes);
  for (int attempt = 1;; ++attempt) {
    connection_.SetConnectionTimeout(kFirstConnectionTimeout + (attempt - 1) * kMoreTimePerAttempt);
    diagnostics_.ui.PumpEvents();
    std::optional<DatabaseError> failure = Open(target, first);
    if (!failure) return std::nullopt;
    if (failure->Description().contains(QLatin1String("login failed for user"), Qt::CaseInsensitive)) {
      target.login.password = settings_.alternativePassword;
      failure = Open(target, first);
      flags_.alternativePassword = !failure;
      return failure;
    }
    diagnostics_.log.WriteLog(QStringLiteral("Database Connection Attempt %1: ").arg(attempt) + failure->Description());
    const bool hopeless = failure->Number() == kNoDriver || failure->Number() == kUnusableSetting;
    if (attempt == kAttempts || hopeless || !wait(std::chrono::milliseconds(0))) return failure;
  }
}

std::optional<DatabaseError> DatabaseConnector::Open(const Target& target, const QString& database) {
  try {
    connection_.Close();
    connection_.Open(BuildConnectionString(target.server, database, settings_), target.login);
    return std::nullopt;
  } catch (const DatabaseError& error) {
    connection_.KeepErrors(error);
    return error;
  }
}

void DatabaseConnector::ReadFileFolder() {
  Recordset files;
  if (statements_.dbOpenRec(files, QStringLiteral("sp_helpfile")) || files.Eof()) return;
  flags_.databaseFileFolder = FolderOf(files.Field(QStringLiteral("filename")).ToText());
}

std::optional<DatabaseError> DatabaseConnector::LeaveMaster(const Target& target) {
  const std::optional<QString> read = ReadStatus(target.database);
  QString status = read.value_or(QString());
  if (status == kSuspect) {
    // No offer here can mend a damaged file. Opening it reports what is wrong with it.
    flags_.status = DatabaseStatus::kNotAvailable;
    diagnostics_.status.Close();
    std::optional<DatabaseError> damage = Open(target, target.database);
    if (!damage) flags_.status = DatabaseStatus::kOnline;
    return damage;
  }
  if (status != kOnline) {
    flags_.status = DatabaseStatus::kNotAvailable;
    if (!AskToBringOnline(status, read && status.isEmpty() ? Reason::kNoDatabase : Reason::kDatabaseAway)) {
      flags_.status = DatabaseStatus::kDeclined;
      diagnostics_.status.Close();
      return std::nullopt;
    }
    diagnostics_.status.ShowStatus(QStringLiteral("Attempting to bring the database online"));
    statements_.dbExecute(QLatin1String("ALTER DATABASE [") + target.database + QLatin1String("] SET ONLINE"));
    status = ReadStatus(target.database).value_or(QString());
  }
  std::optional<DatabaseError> failure;
  if (status == kOnline) {
    flags_.status = DatabaseStatus::kOnline;
    failure = Open(target, target.database);
  }
  diagnostics_.status.Close();
  return failure;
}

std::optional<QString> DatabaseConnector::ReadStatus(const QString& database) {
  Recordset records;
  const QString sql = QLatin1String("SELECT DATABASEPROPERTYEX(") + SqlQuoted(database) + QLatin1String(", 'Status')");
  if (statements_.dbOpenRec(records, sql) || records.Eof()) return std::nullopt;
  return records.Field(0).ToText().toUpper();
}

bool DatabaseConnector::AskToBringOnline(const QString& status, Reason reason) {
  return diagnostics_.ui.ShowMessage({.text = QuestionToBringOnline(status),
                                      .icon = MessageIcon::kQuestion,
                                      .buttons = MessageButtons::kYesNo,
                                      .question = Question::kBringDatabaseOnline,
                                      .reason = reason}) == MessageAnswer::kYes;
}

void DatabaseConnector::ReportFailure(const QString& server, const Login& login, const DatabaseError& error) {
  const QString description = ReadableDescription(error);
  diagnostics_.log.WriteLog(QStringLiteral("Database Connect Error: %1, ").arg(error.Number()) + description);
  diagnostics_.status.Close();
  const QString message =
      QLatin1String("The following error was reported while attempting connection to the database server.\r") +
      description;
  const bool thisComputer = EqualsNoCase(WithoutInstance(server), settings_.computerName);
  if (!error.ConnectionLost() || !thisComputer) {
    diagnostics_.ui.ShowMessage({.text = message, .icon = MessageIcon::kStop, .defaultAnswer = MessageAnswer::kOk});
  } else if (AskToStartService(message)) {
    OpenFirewall();
    RestartService();
  } else {
    return;
  }
  diagnostics_.log.WriteLog(message);
  diagnostics_.log.WriteLog(QLatin1String("Server:") + ServerName(server, settings_) + QLatin1String("  Pw: ") +
                            login.password.left(kLoggedPasswordLength));
}

bool DatabaseConnector::AskToStartService(const QString& message) {
  const QString question =
      message +
      QLatin1String(
          "\r\rThe Database Service on this computer may not be running, or it may be being blocked by your Firewall software.\r\r Do you want to try and start the Database Service now?");
  return diagnostics_.ui.ShowMessage({.text = question,
                                      .icon = MessageIcon::kQuestion,
                                      .buttons = MessageButtons::kYesNo,
                                      .question = Question::kStartDatabaseService}) == MessageAnswer::kYes;
}

void DatabaseConnector::OpenFirewall() {
  if (settings_.readFConfig() == QLatin1String("Y")) return;
  constexpr std::array kRules = {"UDP 1434 SQL_Browser", "TCP 445 SQL_Server_NP2", "TCP 135 SQL_Server_NP"};
  for (const char* rule : kRules)
    shell_.RunHidden(QLatin1String("netsh firewall set portopening ") + QLatin1String(rule) + QLatin1String(" ENABLE"));
  settings_.storeFConfig(QStringLiteral("Y"));
}

void DatabaseConnector::RestartService() {
  const QString service = FindDatabaseService(services_);
  WaitForService(services_.ServiceStartStop(service, kStop) ? kWaitForStop : kWaitWhenRefused);
  WaitForService(services_.ServiceStartStop(service, kStart) ? kWaitForStart : kWaitWhenRefused);
}

void DatabaseConnector::WaitForService(int milliseconds) {
  for (int wait = 0; wait < kServiceWaits; ++wait) {
    diagnostics_.status.ShowStatus(
        QStringLiteral("Please wait a few seconds while the program attempts to start the Database Service"));
    diagnostics_.ui.Wait(milliseconds);
  }
  diagnostics_.status.Close();
}

}  // namespace qbx
