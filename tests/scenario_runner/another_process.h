// Another runner, which a scenario starts to kill it.

#pragma once

#include <QProcess>
#include <QTemporaryFile>
#include <memory>

namespace qbx::scenario {

class AnotherProcess {
 public:
  ~AnotherProcess() { Kill(); }

  /// Runs a scenario on a prepared program folder. The other runner ends with this process.
  void Start(const QString& source, const QString& folder);
  /// \throws ScenarioError when it has ended by itself
  void ExpectRunning();
  void Kill();

 private:
  std::unique_ptr<QTemporaryFile> file_;
  QProcess process_;
};

}  // namespace qbx::scenario
