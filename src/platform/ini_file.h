// The INI file that this program shares with the host product.

#pragma once

#include <QString>

namespace qbx {

/// Sections of `key=value` lines. Sections and keys are matched without regard to case, blanks around "=" and around
/// the value are dropped, a value in one pair of quotes loses them. Lines that mean nothing here (comments, other
/// people's keys) are kept on writing. Reading opens the file anew each time, since the host product writes it too. No
/// call throws.
class IniFile {
 public:
  explicit IniFile(QString path);

  /// \return the value's first 255 characters; the default when the file, the section or the key is missing or the
  /// value is empty
  [[nodiscard]] QString Read(const QString& section, const QString& key, const QString& defaultValue = {}) const;
  /// \return false when the file could not be written; it is then as it was
  bool Write(const QString& section, const QString& key, const QString& value);
  [[nodiscard]] const QString& Path() const { return path_; }

 private:
  QString path_;
};

}  // namespace qbx
