// Holds back the redrawing of a widget.

#pragma once

#include <QPointer>
#include <QWidget>

namespace qbx {

/// Redrawing is off while this lives, and afterwards as it was before.
class RedrawOff {
 public:
  explicit RedrawOff(QWidget* widget) : widget_(widget), was_(widget != nullptr && widget->updatesEnabled()) {
    if (was_) widget->setUpdatesEnabled(false);
  }
  ~RedrawOff() {
    if (was_ && widget_) widget_->setUpdatesEnabled(true);
  }
  RedrawOff(const RedrawOff&) = delete;
  RedrawOff& operator=(const RedrawOff&) = delete;

 private:
  QPointer<QWidget> widget_;
  bool was_;
};

}  // namespace qbx
