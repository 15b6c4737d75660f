// The INI file that this program shares with the host product.

#pragma once

#include <QString>

namespace qbx {

/// Sections of `key=value` lines. Sections and keys are matched without regard to case, and the first match counts.
/// Blanks around "=" and around the value are dropped. A value in one pair of quotes loses them. Text is UTF-8, or
/// Windows-1252 when the file is not valid UTF-8.
///
/// Every read opens the file again, because the host product writes it too. A write changes one line, in the file's own
/// encoding and with its own line ends, and replaces the whole file under a lock. All other bytes stay as they are. No
/// call throws.
class IniFile {
 public:
  /// \param path  as it is on the disk; `PathNoCase` finds a file whose name has another case
  explicit IniFile(QString path);

  /// \return the first 255 characters of the value; the default when the file, the section or the key is missing or the
  ///         value is empty
  [[nodiscard]] QString Read(const QString& section, const QString& key, const QString& defaultValue = {}) const;
  /// \return false when the file could not be written, or when the value has a line break or a character that the
  ///         file's encoding lacks; the file is then unchanged
  bool Write(const QString& section, const QString& key, const QString& value);
  [[nodiscard]] const QString& Path() const { return path_; }

 private:
  QString path_;
};

}  // namespace qbx
