#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace qbx::test {

TempFolder::TempFolder() {
  folder_.emplace(QDir::tempPath() + "/qbx test XXXXXX");
  if (!folder_->isValid()) ADD_FAILURE() << "no temporary folder: " << folder_->errorString().toStdString();
  path_ = folder_->path();
}

QString TempFolder::Write(const QString& name, const QByteArray& bytes) const {
  QString path = File(name);
  QDir().mkpath(QFileInfo(path).path());
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
    ADD_FAILURE() << path.toStdString() << ": " << file.errorString().toStdString();
  }
  return path;
}

QByteArray TempFolder::Read(const QString& name) const {
  QFile file(File(name));
  if (!file.open(QIODevice::ReadOnly)) {
    ADD_FAILURE() << file.fileName().toStdString() << ": " << file.errorString().toStdString();
  }
  return file.readAll();
}

QStringList TempFolder::Names() const {
  return QDir(Path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

}  // namespace qbx::test
