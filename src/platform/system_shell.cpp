#include "platform/system_shell.h"

#include <signal.h>
#include <unistd.h>

#include <QProcess>

namespace qbx {

QString WithHttpPrefix(const QString& target) {
  return target.startsWith(QLatin1String("http"), Qt::CaseInsensitive) ? target : QStringLiteral("http://") + target;
}

bool SystemShell::Open(const QString& target) {
  QProcess process;
  process.setProgram(QStringLiteral("xdg-open"));
  process.setArguments({target});
  process.setStandardOutputFile(QProcess::nullDevice());
  process.setStandardErrorFile(QProcess::nullDevice());
  return process.startDetached();
}

bool SystemShell::RunHidden(const QString& command) {
  QProcess process;
  process.setStandardInputFile(QProcess::nullDevice());
  process.setStandardOutputFile(QProcess::nullDevice());
  process.setStandardErrorFile(QProcess::nullDevice());
  // In a process group of its own, so that the processes which the shell starts can be ended with it.
  process.setChildProcessModifier([] { ::setpgid(0, 0); });
  process.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), command});
  if (!process.waitForStarted(timeout_)) return false;
  if (process.waitForFinished(timeout_)) return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
  ::kill(-static_cast<pid_t>(process.processId()), SIGKILL);
  process.waitForFinished();
  return false;
}

}  // namespace qbx
