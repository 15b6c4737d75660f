#include "marketingctl/start_checks.h"

#include <QFile>
#include <QFileInfo>

#include "database/embedded/engine.h"

namespace qbx::ctl {

namespace {

QString PlaceOfDatabase(const Application& app) {
  const QString server = app.hostConnection.Server();
  return IsEmbeddedServer(server) ? QStringLiteral("in the folder %1").arg(app.startup.ProgramFolder)
                                  : QStringLiteral("on the server %1").arg(server);
}

StartRefusal MissingDatabase(const Application& app) {
  const QString text =
      IsEmbeddedServer(app.hostConnection.Server())
          ? QStringLiteral("There is no database \"%1\" %2, so nothing was done. \"init\" and \"sample\" make one.")
          : QStringLiteral("There is no database \"%1\" %2, so nothing was done.");
  return {Reason::kNoDatabase, text.arg(app.startup.databaseName, PlaceOfDatabase(app))};
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
        QStringLiteral("The database \"%1\" %2 is not available, so nothing was done. \"connect --test\" tells more.")
            .arg(app.startup.databaseName, PlaceOfDatabase(app))};
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
