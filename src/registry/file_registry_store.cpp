#include "registry/file_registry_store.h"

#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <algorithm>

#include "platform/safe_file.h"
#include "registry/registry_file.h"

namespace qbx {

FileRegistryStore::FileRegistryStore(const QString& folder, int lockTimeout)
    : folder_(folder), lockTimeout_(lockTimeout) {
  machine_.path = QDir(folder).filePath(QStringLiteral("machine.reg"));
  machine_.rootName = QStringLiteral("HKEY_LOCAL_MACHINE");
  user_.path = QDir(folder).filePath(QStringLiteral("user.reg"));
  user_.rootName = QStringLiteral("HKEY_CURRENT_USER");
}

FileRegistryStore::FileStamp FileRegistryStore::StampOf(const QString& path) {
  struct stat status = {};
  if (::stat(QFile::encodeName(path).constData(), &status) != 0) return {};
  return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

void FileRegistryStore::Update(Hive& hive) {
  // Taken before the file is read, so that a file which is replaced meanwhile is read again next time.
  const FileStamp stamp = StampOf(hive.path);
  if (hive.fresh && stamp == hive.stamp) return;
  hive.stamp = stamp;
  hive.fresh = true;
  hive.tree = RegistryTree();
  hive.error.clear();
  if (stamp == FileStamp()) return;
  const std::optional<QByteArray> bytes = ReadWholeFile(hive.path);
  const QString problem =
      bytes ? ParseRegistryFile(*bytes, hive.rootName, &hive.tree) : QStringLiteral("no permission");
  if (problem.isEmpty()) return;
  hive.tree = RegistryTree();
  hive.error = QStringLiteral("The registry file \"%1\" cannot be read: %2.").arg(hive.path, problem);
}

template <typename Change>
QString FileRegistryStore::ChangeHive(RegistryHive which, const Change& change) {
  Hive& hive = HiveOf(which);
  QDir().mkpath(folder_);
  const FileLock lock(hive.path + QStringLiteral(".lock"), lockTimeout_);
  if (!lock.Locked()) {
    return QStringLiteral("The registry file \"%1\" cannot be written, or another program holds it.").arg(hive.path);
  }
  Update(hive);
  if (!hive.error.isEmpty()) return hive.error;
  const QByteArray before = FormatRegistryFile(hive.tree, hive.rootName);
  QString error = change(hive.tree);
  const QByteArray after = FormatRegistryFile(hive.tree, hive.rootName);
  // Most values stored when a window closes have not changed; the slow write to the disk is then spared.
  if (error.isEmpty() && after == before) return {};
  if (error.isEmpty()) error = ReplaceFile(hive.path, after);
  // After a failure the tree may differ from the file, so the file is read again.
  hive.fresh = error.isEmpty();
  hive.stamp = StampOf(hive.path);
  return error;
}

bool FileRegistryStore::KeyExists(RegistryHive which, const QString& key) {
  Hive& hive = HiveOf(which);
  Update(hive);
  return hive.error.isEmpty() && hive.tree.Find(key) != nullptr;
}

std::optional<std::vector<RegistryValue>> FileRegistryStore::Values(RegistryHive which, const QString& key,
                                                                    QString* error) {
  Hive& hive = HiveOf(which);
  Update(hive);
  *error = hive.error;
  const RegistryKey* found = hive.tree.Find(key);
  if (!hive.error.isEmpty() || found == nullptr) return std::nullopt;
  return found->values;
}

QStringList FileRegistryStore::SubKeys(RegistryHive which, const QString& key) {
  Hive& hive = HiveOf(which);
  Update(hive);
  const RegistryKey* found = hive.tree.Find(key);
  return found == nullptr ? QStringList() : found->SubKeyNames();
}

QString FileRegistryStore::CreateKey(RegistryHive hive, const QString& key) {
  const auto isControl = [](QChar character) { return character.unicode() < 0x20; };
  if (std::any_of(key.begin(), key.end(), isControl)) {
    return QStringLiteral("The name of a registry key cannot hold line breaks or other control characters.");
  }
  if (KeyExists(hive, key)) return {};
  return ChangeHive(hive, [&key](RegistryTree& tree) { return tree.CreateKey(key); });
}

QString FileRegistryStore::DeleteKey(RegistryHive hive, const QString& key) {
  return ChangeHive(hive, [&key](RegistryTree& tree) { return tree.DeleteKey(key); });
}

QString FileRegistryStore::SetValue(RegistryHive hive, const QString& key, const RegistryValue& value) {
  QString problem = CheckRegistryValue(value);
  if (!problem.isEmpty()) return problem;
  return ChangeHive(hive, [&](RegistryTree& tree) { return tree.SetValue(key, value); });
}

QString FileRegistryStore::DeleteValue(RegistryHive hive, const QString& key, const QString& name) {
  return ChangeHive(hive, [&](RegistryTree& tree) { return tree.DeleteValue(key, name); });
}

}  // namespace qbx
