#include "startup/folders.h"

#include <QDir>
#include <QStandardPaths>

namespace qbx {
namespace {

constexpr char kOwnFolder[] = "/qbx-marketing";

QString UserFolder(QStandardPaths::StandardLocation location) {
  return QStandardPaths::writableLocation(location) + QString::fromLatin1(kOwnFolder);
}

}  // namespace

Folders FindFolders(const QString& given) {
  const QString named = given.isEmpty() ? qEnvironmentVariable("QBX_PROGRAM_FOLDER") : given;
  QString program = named;
  if (named.isEmpty()) {
    program = UserFolder(QStandardPaths::GenericDataLocation);
    QDir().mkpath(program);
  }
  program = QDir::cleanPath(QDir(program).absolutePath());
  if (!program.endsWith(QLatin1Char('/'))) program += QLatin1Char('/');

  QString registry = qEnvironmentVariable("QBX_REGISTRY_FOLDER");
  if (registry.isEmpty()) {
    registry = (named.isEmpty() ? UserFolder(QStandardPaths::GenericConfigLocation) + QLatin1Char('/') : program) +
               QStringLiteral("registry");
  }
  return {program, registry};
}

}  // namespace qbx
