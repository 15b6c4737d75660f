#include "platform/file_names.h"

#include <QDir>
#include <QFileInfo>

namespace qbx {
namespace {

QString WithSlashes(QString name) {
  return name.replace(u'\\', u'/');
}

/// The entry of this name in one folder; empty when there is none.
QString FindEntry(const QDir& folder, const QString& name) {
  if (QFileInfo::exists(folder.filePath(name))) return folder.filePath(name);
  const QStringList entries = folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  for (const QString& entry : entries) {
    if (entry.compare(name, Qt::CaseInsensitive) == 0) return folder.filePath(entry);
  }
  return {};
}

}  // namespace

std::optional<QString> FindFileNoCase(const QString& folder, const QString& name) {
  const QStringList parts = WithSlashes(name).split(u'/', Qt::SkipEmptyParts);
  if (parts.isEmpty()) return std::nullopt;
  QString path = folder;
  for (const QString& part : parts) {
    path = FindEntry(QDir(path), part);
    if (path.isEmpty()) return std::nullopt;
  }
  return path;
}

QString PathNoCase(const QString& folder, const QString& name) {
  const std::optional<QString> found = FindFileNoCase(folder, name);
  if (found) return *found;
  const QStringList parts = WithSlashes(name).split(u'/', Qt::SkipEmptyParts);
  return QDir(folder).filePath(parts.join(u'/'));
}

}  // namespace qbx
