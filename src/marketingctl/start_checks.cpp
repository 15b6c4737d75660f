#include "marketingctl/start_checks.h"

#include <QFile>
#include <QFileInfo>

#include "database/embedded/engine.h"

namespace qbx::ctl {

namespace {

StartRefusal MissingDatabase(const Application& app) {
  const QString name = app.startup.databaseName;
  const QString server = app.hostConnection.Server();
  if (!IsEmbeddedServer(server))
    return {Reason::kNoDatabase,
            QStringLiteral("There is no database \"%1\" on the server %2, so nothing was done.").arg(name, server)};
  return {Reason::kNoDatabase,
          QStringLiteral(
              "There is no database \"%1\" in the folder %2, so nothing was done. \"init\" and \"sample\" make one.")
              .arg(name, app.startup.ProgramFolder)};
}

}  // namespace

std::optional<StartRefusal> FolderProblem(const QString& folder) {
  if (QFileInfo(folder).isDir()) return std::nullopt;
  return StartRefusal{Reason::kNoFolder, QStringLiteral("There is no folder %1.").arg(folder)};
}

std::optional<StartRefusal> IniProblem(const QString& path) {
  QFile file(path);
  if (!file.exists()) return std::nullopt;
  if (!file.open(QIODevice::ReadOnly)) {
    return StartRefusal{Reason::kStartFailed,
                        QStringLiteral("The file ") + path + QStringLiteral(" cannot be read: ") + file.errorString()};
  }
  if (!file.readAll().contains('\0')) return std::nullopt;
  return StartRefusal{
      Reason::kStartFailed,
      QStringLiteral("The file ") + path +
          QStringLiteral(" is damaged: it is not text. It was left as it is; repair or remove it, then try again.")};
}

std::optional<StartRefusal> RegistryProblem(RegistryStore& registry) {
  for (const RegistryHive hive : {RegistryHive::kLocalMachine, RegistryHive::kCurrentUser}) {
    QString error;
    (void)registry.Values(hive, QString(), &error);
    if (!error.isEmpty()) return StartRefusal{Reason::kStartFailed, error};
  }
  return std::nullopt;
}

std::optional<StartRefusal> StartProblem(Application& app, const HeadlessUi& ui) {
  if (!app.hostConnection.Connected() || ui.QuitRequested()) {
    return StartRefusal{
        Reason::kDatabaseAway,
        QStringLiteral("There is no connection to the database, so nothing was done. \"connect --test\" tells more.")};
  }
  if (ui.DatabaseMissing()) return MissingDatabase(app);
  if (!app.hostConnection.Ready()) {
    return StartRefusal{
        Reason::kDatabaseAway,
        QStringLiteral(
            "The database \"%1\" of %2 is not available, so nothing was done. \"status\" shows what the program connects to.")
            .arg(app.startup.databaseName, app.startup.ProgramFolder)};
  }
  if (ui.Warned() && app.connection.IsLost()) {
    return StartRefusal{Reason::kDatabaseAway,
                        QStringLiteral("The connection to the database was lost, so nothing was done.")};
  }
  if (ui.Warned()) {
    return StartRefusal{Reason::kStartFailed,
                        QStringLiteral("The program did not start well (see above), so nothing was done.")};
  }
  return std::nullopt;
}

}  // namespace qbx::ctl
