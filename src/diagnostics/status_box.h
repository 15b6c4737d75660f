// The status box: what a long operation is doing, with a Cancel button when it can be stopped.

#pragma once

#include <QString>

#include "platform/user_interface.h"

namespace qbx {

/// The rules of the status box over whatever shows it. One for the program; any routine may close it.
class StatusBox {
 public:
  explicit StatusBox(UserInterface& ui) : ui_(ui) {}

  /// Shows a text, or closes the box when the text is empty. "..." is added unless the text ends in "." or the style is
  /// not 0. Sets the hourglass while shown, lets events run and waits 160 ms for the eye.
  /// \param style  12: blue on white; anything else: the normal colours
  void ShowStatus(const QString& text, bool showCancel = false, int style = 0);
  void Close() { ShowStatus({}); }
  [[nodiscard]] bool Visible() const { return visible_; }
  /// Whether it is shown with its Cancel button.
  [[nodiscard]] bool OffersCancel() const { return visible_ && offersCancel_; }
  /// Cancel was pressed since the text was last set.
  [[nodiscard]] bool Cancelled() const { return ui_.StatusCancelled(); }

 private:
  UserInterface& ui_;
  bool visible_ = false;
  bool offersCancel_ = false;
};

}  // namespace qbx
