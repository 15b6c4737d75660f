#include "startup/back_up_database.h"

#include <atomic>

#include "database/embedded/database_files.h"
#include "hostdb/database_backup.h"
#include "startup/application.h"

namespace qbx {

bool CanBackUpDatabase(const Application& app) {
  return app.hostConnection.Ready() && IsEmbeddedServer(app.hostConnection.Server());
}

void BackUpDatabase(Application& app, const QString& target) {
  const QString path = DatabaseFiles(app.startup.ProgramFolder).FileOf(app.hostConnection.DatabaseName());
  std::atomic<bool> cancelled = false;
  CopyOutcome outcome = CopyOutcome::kFailed;
  QString problem;
  app.status.ShowStatus(QStringLiteral("Backing up the database"), true);
  try {
    app.connection.RunLong(
        [&] {
          outcome = CopyHostDatabase(
              path, target, [&cancelled] { return cancelled.load(); }, problem);
        },
        [&] {
          app.ui.PumpEvents();
          if (app.status.Cancelled()) cancelled = true;
        },
        {});
  } catch (const std::exception& error) {
    problem = QString::fromUtf8(error.what());
  }
  app.status.Close();
  if (outcome == CopyOutcome::kCopied) {
    app.ui.ShowMessage(
        {.text = QStringLiteral("The database was backed up to ") + target, .icon = MessageIcon::kInformation});
  } else if (outcome == CopyOutcome::kFailed) {
    app.ui.ShowMessage(
        {.text = QStringLiteral("The database was not backed up. ") + problem, .icon = MessageIcon::kExclamation});
  }
}

}  // namespace qbx
