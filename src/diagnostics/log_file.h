// The program's text log.

#pragma once

#include <QString>

#include "platform/clock.h"

namespace qbx {

/// Appends lines to the log file: "hh:mm:ss", two blanks, the text, CR LF. The file is opened and closed on every call.
/// No failure is shown: a line that cannot be written is lost. Must never be given a secret.
class LogFile {
 public:
  /// \param fallbackPath  the file as long as no path is set (the program folder's "MARKETING.LOG")
  /// \param writes        false: every line is lost
  LogFile(const Clock& clock, QString fallbackPath, bool writes = true);

  /// \param path  empty for the fallback
  void SetPath(const QString& path) { path_ = path; }
  [[nodiscard]] QString Path() const { return path_.isEmpty() ? fallbackPath_ : path_; }

  void WriteLog(const QString& text) const;

 private:
  const Clock& clock_;
  QString path_;
  QString fallbackPath_;
  bool writes_;
};

}  // namespace qbx
