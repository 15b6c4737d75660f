#include "another_process.h"

#include <sys/prctl.h>

#include <QCoreApplication>
#include <csignal>

#include "scenario_error.h"

namespace qbx::scenario {

void AnotherProcess::Start(const QString& source, const QString& folder) {
  Kill();
  file_ = std::make_unique<QTemporaryFile>();
  if (!file_->open() || file_->write(source.toUtf8()) < 0 || !file_->flush()) throw ScenarioError(file_->errorString());
  process_.setProcessChannelMode(QProcess::MergedChannels);
  process_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
  process_.start(QCoreApplication::applicationFilePath(),
                 {QStringLiteral("--here"), QStringLiteral("--on"), folder, QStringLiteral("--"), file_->fileName()});
}

void AnotherProcess::ExpectRunning() {
  if (process_.state() == QProcess::NotRunning)
    throw ScenarioError(QStringLiteral("The other process ended by itself: ") + QString::fromUtf8(process_.readAll()));
}

void AnotherProcess::Kill() {
  process_.kill();
  process_.waitForFinished();
}

}  // namespace qbx::scenario
