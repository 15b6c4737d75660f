#include "marketing/ui/run_view.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QString>

namespace qbx {

namespace {

constexpr int kShowRunEvery = 40;  // milliseconds

}  // namespace

RunView::RunView(Controls controls, ResultsLog& resultsLog, std::function<void(bool)> begins)
    : controls_(std::move(controls)),
      resultsLog_(resultsLog),
      begins_(std::move(begins)),
      listener_(resultsLog.Listen([this](const QString& line) {
        lines_.append(line);
        ShowWhenDue();
      })) {}

RunView::~RunView() {
  resultsLog_.StopListening(listener_);
  Show();
  controls_.line.setText(run_.isValid() ? progress_.Done() : QString());
  controls_.bar.reset();
}

void RunView::Progress(int done, int total) {
  const bool first = !run_.isValid();
  if (first) run_.start();
  done_ = done;
  total_ = total;
  first ? Show() : ShowWhenDue();
}

QString RunView::SettleHint(int) const {
  return QStringLiteral("Say in the list \"Failed or In Doubt\" on step 5 whether it arrived.");
}

void RunView::ShowWhenDue() {
  if (!shown_.isValid() || shown_.elapsed() >= kShowRunEvery) Show();
}

void RunView::Show() {
  shown_.start();
  if (!lines_.isEmpty()) controls_.log.appendPlainText(lines_.join(QLatin1Char('\n')));
  lines_.clear();
  if (!run_.isValid()) return;
  controls_.bar.setMaximum(total_);
  controls_.bar.setValue(done_);
  progress_.Note(done_, total_, run_.elapsed());
  controls_.line.setText(progress_.Text());
  controls_.showCounters();
}

}  // namespace qbx
