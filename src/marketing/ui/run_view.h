// What page 5 shows during a run.

#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QStringList>
#include <functional>

#include "dispatch/mailshot_observer.h"
#include "dispatch/results_log_file.h"
#include "dispatch/run_progress.h"

class QLabel;
class QPlainTextEdit;
class QProgressBar;

namespace qbx {

/// Shows progress, rate, time left and the lines of the results log. A run may send thousands of messages a second; the
/// controls change at most 25 times a second, so that showing hardly slows the run.
class RunView final : public MailshotObserver {
 public:
  struct Controls {
    QProgressBar& bar;
    QLabel& line;
    QPlainTextEdit& log;
    std::function<void()> showCounters;  ///< called whenever the controls change
  };
  /// \param begins  called when the run really begins, see `MailshotObserver::Begins`
  RunView(Controls controls, ResultsLog& resultsLog, std::function<void(bool resumed)> begins);
  /// Shows the last state.
  ~RunView() override;
  RunView(const RunView&) = delete;
  RunView& operator=(const RunView&) = delete;

  void Begins(bool resumed) override { begins_(resumed); }
  void Progress(int done, int total) override;
  [[nodiscard]] QString SettleHint(int campaignId) const override;

 private:
  void ShowWhenDue();
  void Show();

  Controls controls_;
  ResultsLog& resultsLog_;
  std::function<void(bool)> begins_;
  int listener_;
  QStringList lines_;
  RunProgress progress_;
  int done_ = 0;
  int total_ = 0;
  QElapsedTimer run_;
  QElapsedTimer shown_;
};

}  // namespace qbx
