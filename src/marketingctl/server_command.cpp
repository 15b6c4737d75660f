// marketingctl server: the host database's tables and procedures on SQL Server.

#include <iostream>
#include <memory>

#include "database/connect_database.h"
#include "hostdb/server_database.h"
#include "marketingctl/commands.h"
#include "marketingctl/output.h"
#include "startup/connect_host.h"

namespace qbx::ctl {

namespace {

constexpr int kLoginSeconds = 20;
/// For one batch. Making an index of a large table takes long.
constexpr int kBatchSeconds = 3600;

/// The configured login, or the named one with the first line of the standard input as password.
Login LoginFor(const LoginSettings& settings, const std::string& name) {
  if (name.empty()) return settings.login;
  std::string password;
  std::getline(std::cin, password);
  return {QString::fromStdString(name), QString::fromStdString(password)};
}

int Install(Program& program, const std::string& loginName) {
  Application& app = program.app;
  const LoginSettings settings =
      ReadLoginSettings(app.registry, app.ini, app.startup.ProgramFolder, app.service, app.cipher);
  const QString server = ServerName(settings.server, {.settingsVersion2 = settings.settingsVersion2,
                                                      .overrideAutomaticSettings = settings.overrideAutomaticSettings});
  if (IsEmbeddedServer(server))
    return Refuse(QStringLiteral("No SQL Server is set. \"marketingctl init\" makes an embedded database."));
  if (loginName.empty() && !settings.passwordFailure.isEmpty())
    return Refuse(Reason::kDatabaseAway, settings.passwordFailure);
  bool connected = false;
  try {
    app.sqlServer.SetUp(settings.sqlServer);
    const std::unique_ptr<Session> session =
        app.sqlServer.Connect({server, app.startup.databaseName}, LoginFor(settings, loginName), kLoginSeconds);
    session->SetCommandTimeout(kBatchSeconds);
    connected = true;
    InstallOnServer(*session);
  } catch (const DatabaseError& error) {
    if (connected)
      return Refuse(error.ConnectionLost() ? Reason::kDatabaseAway : Reason::kScriptRefused, error.Description());
    return Refuse(
        Reason::kDatabaseAway,
        QStringLiteral(
            "There is no connection to the database \"%1\" on %2, so nothing was done. It was said: %3 \"connect --test\" tells more.")
            .arg(app.startup.databaseName, server, error.Description()));
  }
  if (program.json)
    PrintJson(QJsonObject{{QStringLiteral("server"), server}, {QStringLiteral("database"), app.startup.databaseName}});
  else
    PrintLine(QStringLiteral("Installed in %1 on %2.").arg(app.startup.databaseName, server));
  return kDone;
}

int PrintScript() {
  const QByteArray script = ServerScript().toUtf8();
  std::cout.write(script.constData(), script.size());
  return kDone;
}

}  // namespace

void AddServerCommand(Runner& runner) {
  CLI::App& command = *runner.Root().add_subcommand("server", "The tables and procedures of a database on SQL Server");
  command.require_subcommand(1);
  CLI::App& script = *command.add_subcommand("script", "Print the script that installs them or brings them up to date");
  script.footer("Example: marketingctl server script > install.sql");
  runner.AddBareCommand(script, PrintScript);
  CLI::App& install = *command.add_subcommand("install", "Run that script in the database that is set");
  auto login = std::make_shared<std::string>();
  install.add_option("--login", *login,
                     "Login that owns the database; its password is the first line of the standard input");
  install.footer("Example: marketingctl --folder garage server install --login sa < password.txt");
  runner.AddUnconnectedCommand(install, [login](Program& program) { return Install(program, *login); });
}

}  // namespace qbx::ctl
