#include "consent/garage_folder.h"

#include <QFile>

#include "hostdb/host_database.h"

namespace qbx::consent {
namespace {

/// An empty host database, made once and copied for each round.
const QByteArray& EmptyDatabase() {
  static const QByteArray kBytes = [] {
    const test::TempFolder folder;
    const QString path = folder.File(QStringLiteral("empty.db"));
    if (const auto problem = CreateHostDatabase(path, ExistingFile::kRefuse)) qFatal("%s", qPrintable(*problem));
    QFile file(path);
    (void)file.open(QIODevice::ReadOnly);
    return file.readAll();
  }();
  return kBytes;
}

}  // namespace

GarageFolder::GarageFolder() {
  const QByteArray& bytes = EmptyDatabase();
  QFile file(DatabaseFile());
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
    qFatal("%s: %s", qPrintable(file.fileName()), qPrintable(file.errorString()));
}

}  // namespace qbx::consent
