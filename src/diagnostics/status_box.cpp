#include "diagnostics/status_box.h"

namespace qbx {

namespace {

constexpr int kHighlightStyle = 12;
constexpr int kSettleMilliseconds = 160;

}  // namespace

void StatusBox::ShowStatus(const QString& text, bool showCancel, int style) {
  visible_ = !text.isEmpty();
  offersCancel_ = showCancel;
  if (!visible_) {
    ui_.CloseStatusBox();
    ui_.SetBusy(false);
    return;
  }
  const bool addDots = style == 0 && !text.endsWith(u'.');
  ui_.ShowStatusBox({.message = addDots ? text + QLatin1String("...") : text,
                     .showCancel = showCancel,
                     .highlighted = style == kHighlightStyle});
  ui_.SetBusy(true);
  ui_.PumpEvents();
  ui_.Pause(kSettleMilliseconds);
}

}  // namespace qbx
