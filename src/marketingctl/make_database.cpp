#include "marketingctl/make_database.h"

#include <QDir>

#include "database/embedded/database_files.h"
#include "platform/file_names.h"
#include "settings/edition_names.h"

namespace qbx::ctl {

std::optional<QString> DatabaseFileFor(const QString& folder, const GlobalFlags& flags, bool replace) {
  const QDir dir(folder);
  const QString given = QString::fromStdString(flags.database);
  if (!given.isEmpty() && !DatabaseFiles::CanBeNamed(given)) {
    Refuse(
        Reason::kInvalidName,
        QStringLiteral(
            "\"%1\" cannot be the name of a database: it names a file NAME.db of the folder, without / \\ ; ] or a blank at its ends.")
            .arg(given));
    return std::nullopt;
  }
  if (!dir.mkpath(QStringLiteral("."))) {
    Refuse(QStringLiteral("The folder ") + folder + QStringLiteral(" cannot be made."));
    return std::nullopt;
  }
  QString name = given;
  if (name.isEmpty()) {
    const IniFile ini(PathNoCase(folder, QStringLiteral("QBX.INI")));
    name = EditionNamesFor(EditionOfFolder(folder, ini), {}, {}).databaseName;
  }
  const QStringList existing = dir.entryList({QStringLiteral("*.db")}, QDir::Files);
  if (!existing.isEmpty() && !replace) {
    Refuse(Reason::kDatabaseExists,
           QStringLiteral("The folder ") + folder + QStringLiteral(" already holds a database (") + existing.first() +
               QStringLiteral("). Nothing was changed; --replace makes a new one in its place."));
    return std::nullopt;
  }
  const QString replaced = DatabaseFiles(dir.path()).FileOf(name);  // its name may be in another case
  return replaced.isEmpty() ? dir.filePath(name + QStringLiteral(".db")) : replaced;
}

}  // namespace qbx::ctl
