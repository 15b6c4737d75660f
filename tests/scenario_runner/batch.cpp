#include "batch.h"

#include <QCoreApplication>
#include <QProcess>
#include <cstdio>

namespace qbx::scenario {
namespace {

void PrintLine(const QString& line) {
  std::printf("%s\n", line.toUtf8().constData());
  std::fflush(stdout);
}

bool RunOne(const QString& file, const BatchSettings& settings) {
  PrintLine(QStringLiteral("RUN  ") + file);
  QStringList arguments = {QStringLiteral("--here")};
  if (!settings.screenshots.isEmpty()) arguments += {QStringLiteral("--screenshots"), settings.screenshots};
  QProcess process;
  // For the sanitizers: libraries of the platform (fonts) keep memory until the end. That is no leak of the program.
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  if (!environment.contains(QStringLiteral("ASAN_OPTIONS")))
    environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
  process.setProcessEnvironment(environment);
  process.setProcessChannelMode(QProcess::ForwardedChannels);
  process.start(QCoreApplication::applicationFilePath(), arguments + QStringList{QStringLiteral("--"), file});
  const bool ended = process.waitForFinished(settings.timeLimitSeconds * 1000);
  if (!ended) {
    const bool started = process.state() != QProcess::NotRunning;
    process.kill();
    process.waitForFinished();
    PrintLine(QStringLiteral("FAIL %1: %2")
                  .arg(file, started ? QStringLiteral("has not ended after %1 s").arg(settings.timeLimitSeconds)
                                     : process.errorString()));
    return false;
  }
  if (process.exitStatus() == QProcess::CrashExit) {
    PrintLine(QStringLiteral("FAIL %1: the program crashed (signal %2)").arg(file).arg(process.exitCode()));
    return false;
  }
  return process.exitCode() == 0;
}

}  // namespace

int RunBatch(const BatchSettings& settings) {
  int passed = 0;
  for (const QString& file : settings.files) {
    if (RunOne(file, settings)) ++passed;
  }
  const int failed = static_cast<int>(settings.files.size()) - passed;
  PrintLine(QStringLiteral("%1 passed, %2 failed").arg(passed).arg(failed));
  return passed > 0 && failed == 0 ? 0 : 1;
}

}  // namespace qbx::scenario
