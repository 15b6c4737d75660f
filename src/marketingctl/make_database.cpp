#include "marketingctl/make_database.h"

#include <QDir>

#include "settings/edition_names.h"

namespace qbx::ctl {

std::optional<QString> DatabaseFileFor(const QString& folder, const GlobalFlags& flags, bool replace) {
  const QDir dir(folder);
  if (!dir.mkpath(QStringLiteral("."))) {
    Refuse(QStringLiteral("The folder ") + folder + QStringLiteral(" cannot be made."));
    return std::nullopt;
  }
  QString name = QString::fromStdString(flags.database);
  if (name.isEmpty()) name = EditionNamesFor(DetectEdition(folder), {}, {}).databaseName;
  const QStringList existing = dir.entryList({QStringLiteral("*.db")}, QDir::Files);
  if (!existing.isEmpty() && !replace) {
    Refuse(Reason::kDatabaseExists,
           QStringLiteral("The folder ") + folder + QStringLiteral(" already holds a database (") + existing.first() +
               QStringLiteral("). Nothing was changed; --replace makes a new one in its place."));
    return std::nullopt;
  }
  return dir.filePath(name + QStringLiteral(".db"));
}

}  // namespace qbx::ctl
