#include "diagnostics/wait_box.h"

namespace qbx {

namespace {

constexpr int kShowAfter = 330;           // milliseconds
constexpr int kProgressInterval = 1'000;  // milliseconds; each change of the box waits a moment for the eye

}  // namespace

WaitBox::WaitBox(const Diagnostics& diagnostics, QString text)
    : diagnostics_(diagnostics), text_(std::move(text)), isOfAnother_(diagnostics.status.OffersCancel()) {
  since_.start();
}

WaitBox::~WaitBox() {
  if (shown_) diagnostics_.status.Close();
}

bool WaitBox::GoOn() {
  if (!isOfAnother_ && !shown_ && since_.elapsed() >= kShowAfter) Show();
  diagnostics_.ui.PumpEvents();
  // Before this box is shown, Cancel belongs to another box.
  cancelled_ = cancelled_ || ((isOfAnother_ || shown_) && diagnostics_.status.Cancelled());
  return !cancelled_;
}

void WaitBox::ShowProgress(const QString& progress) {
  progress_ = progress;
  if (shown_ && !cancelled_ && since_.elapsed() >= kProgressInterval) Show();
}

void WaitBox::Show() {
  shown_ = true;
  diagnostics_.status.ShowStatus(progress_.isEmpty() ? text_ : QStringLiteral("%1: %2").arg(text_, progress_), true);
  since_.restart();
}

}  // namespace qbx
