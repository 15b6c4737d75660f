#include "diagnostics/wait_box.h"

namespace qbx {

namespace {

// A box without Cancel only informs. Most of what cannot be cancelled is over sooner: an event has 2 seconds.
constexpr int kShowWithoutCancelAfter = 2'500;  // milliseconds
constexpr int kProgressInterval = 1'000;        // milliseconds; each change of the box waits a moment for the eye

}  // namespace

WaitBox::WaitBox(const Diagnostics& diagnostics, QString text, int showAfter)
    : diagnostics_(diagnostics),
      text_(std::move(text)),
      showAfter_(showAfter),
      isOfAnother_(diagnostics.status.OffersCancel()) {
  since_.start();
}

WaitBox::~WaitBox() {
  if (shown_) diagnostics_.status.Close();
}

bool WaitBox::GoOn(bool mayCancel) {
  const int showAfter = mayCancel ? showAfter_ : kShowWithoutCancelAfter;
  const bool changes = shown_ ? mayCancel != offersCancel_ : since_.elapsed() >= showAfter;
  const bool wouldReplace = !shown_ && !mayCancel && diagnostics_.status.Visible();
  if (changes && !isOfAnother_ && !wouldReplace && !(cancelled_ && mayCancel)) {
    offersCancel_ = mayCancel;
    Show();
  }
  diagnostics_.ui.PumpEvents();
  // Before this box is shown, Cancel belongs to another box.
  cancelled_ = cancelled_ || (mayCancel && (isOfAnother_ || shown_) && diagnostics_.status.Cancelled());
  return !cancelled_ || !mayCancel;
}

void WaitBox::ShowProgress(const QString& progress) {
  progress_ = progress;
  if (shown_ && !cancelled_ && since_.elapsed() >= kProgressInterval) Show();
}

void WaitBox::Show() {
  shown_ = true;
  diagnostics_.status.ShowStatus(progress_.isEmpty() ? text_ : QStringLiteral("%1: %2").arg(text_, progress_),
                                 offersCancel_);
  since_.restart();
}

}  // namespace qbx
