// A folder for the time of a test.

#pragma once

#include <QByteArray>
#include <QDir>
#include <QString>
#include <QTemporaryDir>
#include <optional>

namespace qbx::test {

/// Makes an empty folder, with a blank in its name as on users' computers, and removes it with its contents.
class TempFolder {
 public:
  TempFolder();
  /// Uses a folder that another process makes and removes.
  explicit TempFolder(const QString& existing) : path_(existing) {}

  /// Without a separator at the end.
  [[nodiscard]] QString Path() const { return path_; }
  [[nodiscard]] QString File(const QString& name) const { return QDir(path_).filePath(name); }
  /// Writes a file below the folder, and the folders above it; fails the test when it cannot.
  /// \return its path
  QString Write(const QString& name, const QByteArray& bytes) const;
  /// \return the file's bytes; empty, with the test failed, when it cannot be read
  [[nodiscard]] QByteArray Read(const QString& name) const;
  /// Names of the files and folders in it, sorted.
  [[nodiscard]] QStringList Names() const;

 private:
  std::optional<QTemporaryDir> folder_;
  QString path_;
};

}  // namespace qbx::test
