// marketingctl status: what the program would connect to, versions, edition.

#include "marketingctl/commands.h"
#include "marketingctl/output.h"
#include "marketingctl/start_checks.h"

namespace qbx::ctl {

namespace {

QString EditionText(const EditionFlags& edition) {
  QStringList names;
  if (edition.vehicleSales) names << QStringLiteral("vehicle sales");
  if (edition.truck) names << QStringLiteral("truck");
  if (edition.boat) names << QStringLiteral("boat");
  if (edition.parts) names << QStringLiteral("parts");
  if (edition.commercialVehicle) names << QStringLiteral("commercial vehicle");
  return names.isEmpty() ? QStringLiteral("garage") : names.join(QStringLiteral(", "));
}

int Status(Program& program) {
  Application& app = program.app;
  const bool connected = app.hostConnection.Ready();
  const QString server = app.hostConnection.Server();
  const QList<QPair<QString, QJsonValue>> facts = {
      {QStringLiteral("title"), app.startup.title},
      {QStringLiteral("version"), app.startup.fullVersion},
      {QStringLiteral("edition"), EditionText(app.startup.edition)},
      {QStringLiteral("folder"), app.startup.ProgramFolder},
      {QStringLiteral("log"), app.log.Path()},
      {QStringLiteral("computer"), app.host.ComputerName()},
      {QStringLiteral("user"), app.startup.user},
      {QStringLiteral("server"), server.isEmpty() ? QStringLiteral("embedded:") : server},
      {QStringLiteral("database"), app.startup.databaseName},
      {QStringLiteral("connected"), connected},
      {QStringLiteral("databaseVersion"), app.options.DatabaseVersion},
      {QStringLiteral("moduleVersion"), app.options.ModuleDatabaseVersion},
  };
  if (!connected) {
    if (const auto problem = StartProblem(app, program.ui)) Refuse(problem->reason, problem->text);
  }
  if (program.json) {
    QJsonObject object = connected ? QJsonObject() : ErrorJson();
    for (const auto& [name, value] : facts)
      object.insert(name, value);
    PrintJson(object);
  } else {
    for (const auto& [name, value] : facts)
      PrintLine(name.leftJustified(16) + value.toVariant().toString());
  }
  return connected ? kDone : kRefused;
}

}  // namespace

void AddStatusCommand(Runner& runner) {
  CLI::App& command =
      *runner.Root().add_subcommand("status", "Show what the program connects to, versions and edition");
  command.footer("Example: marketingctl --folder garage --user Pat status\nEnds with 1 when there is no connection.");
  runner.AddOfflineCommand(command, Status);
}

}  // namespace qbx::ctl
