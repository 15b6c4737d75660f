#include "diagnostics/log_file.h"

#include <QFile>

namespace qbx {

LogFile::LogFile(const Clock& clock, QString fallbackPath, bool writes)
    : clock_(clock), fallbackPath_(std::move(fallbackPath)), writes_(writes) {}

void LogFile::WriteLog(const QString& text) const {
  if (!writes_) return;
  const QString line = clock_.Now().toString(QStringLiteral("HH:mm:ss")) + QLatin1String("  ") + text;
  QFile file(Path());
  // One write for the whole line, so that the lines of two processes in one file do not mix.
  if (file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) file.write(line.toUtf8() + "\r\n");
}

}  // namespace qbx
