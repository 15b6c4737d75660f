// Another runner, which a scenario starts to kill it.

#pragma once

#include <QProcess>
#include <QTemporaryFile>
#include <memory>

namespace qbx::scenario {

class AnotherProcess {
 public:
  ~AnotherProcess() { Kill(); }

  /// Runs a scenario on a program folder that is laid out already. It does not outlive this process.
  void Start(const QString& source, const QString& folder);
  /// \throws ScenarioError when it ended by itself
  void ExpectRunning();
  void Kill();

 private:
  std::unique_ptr<QTemporaryFile> file_;
  QProcess process_;
};

}  // namespace qbx::scenario
