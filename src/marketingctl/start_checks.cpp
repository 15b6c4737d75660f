#include "marketingctl/start_checks.h"

#include <QFile>

namespace qbx::ctl {

std::optional<QString> IniProblem(const QString& path) {
  QFile file(path);
  if (!file.exists()) return std::nullopt;
  if (!file.open(QIODevice::ReadOnly)) {
    return QStringLiteral("The file ") + path + QStringLiteral(" cannot be read: ") + file.errorString();
  }
  if (!file.readAll().contains('\0')) return std::nullopt;
  return QStringLiteral("The file ") + path +
         QStringLiteral(" is damaged: it is not text. It was left as it is; repair or remove it, then try again.");
}

std::optional<QString> StartProblem(const Application& app, const HeadlessUi& ui) {
  if (!app.hostConnection.Connected())
    return QStringLiteral("There is no connection to the database, so nothing was done.");
  if (!app.hostConnection.Ready()) {
    return QStringLiteral(
               "The database \"%1\" of %2 is not available, so nothing was done. \"status\" shows what the program "
               "connects to, "
               "\"init\" and \"sample\" make a database.")
        .arg(app.startup.databaseName, app.startup.ProgramFolder);
  }
  if (ui.Warned()) return QStringLiteral("The program did not start well (see above), so nothing was done.");
  return std::nullopt;
}

}  // namespace qbx::ctl
