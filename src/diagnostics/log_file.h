// The program's text log.

#pragma once

#include <QString>

#include "platform/clock.h"

namespace qbx {

/// Appends lines "hh:mm:ss", two blanks, text, CR LF to the log file, which is opened and closed on every call.
/// Never fails visibly: a line that cannot be written is lost. Must never be given a secret.
class LogFile {
 public:
  /// \param fallbackPath  the file to use while no path is set (the program folder's "MARKETING.LOG")
  LogFile(const Clock& clock, QString fallbackPath);

  /// \param path  empty: the fallback
  void SetPath(const QString& path) { path_ = path; }
  [[nodiscard]] QString Path() const { return path_.isEmpty() ? fallbackPath_ : path_; }

  void WriteLog(const QString& text) const;

 private:
  const Clock& clock_;
  QString path_;
  QString fallbackPath_;
};

}  // namespace qbx
