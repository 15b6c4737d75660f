// A folder that lives as long as a test.

#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace qbx::test {

/// Makes an empty folder (with a blank in its name, as users have) and removes it with all it holds.
class TempFolder {
 public:
  TempFolder();

  /// Without a separator at the end.
  [[nodiscard]] QString Path() const { return folder_.path(); }
  [[nodiscard]] QString File(const QString& name) const { return folder_.filePath(name); }
  /// Writes a file below the folder, and the folders above it; fails the test when it cannot.
  /// \return its path
  QString Write(const QString& name, const QByteArray& bytes) const;
  /// \return the file's bytes; empty, with the test failed, when it cannot be read
  [[nodiscard]] QByteArray Read(const QString& name) const;
  /// Names of the files and folders in it, sorted.
  [[nodiscard]] QStringList Names() const;

 private:
  QTemporaryDir folder_;
};

}  // namespace qbx::test
