// The status box: what a long operation is doing, with a Cancel button when the operation can be stopped.

#pragma once

#include <QString>

#include "platform/user_interface.h"

namespace qbx {

/// The rules of the status box, whatever shows it. There is one in the program; any routine may close it.
class StatusBox {
 public:
  explicit StatusBox(UserInterface& ui) : ui_(ui) {}

  /// Shows a text, or closes the box when the text is empty. "..." is added unless the text ends in "." or the style is
  /// not 0. While the box is shown the pointer is an hourglass. Lets events run and waits 160 ms, so that the text can
  /// be read.
  /// \param style  12 for blue on white; anything else for the normal colours
  void ShowStatus(const QString& text, bool showCancel = false, int style = 0);
  void Close() { ShowStatus({}); }
  [[nodiscard]] bool Visible() const { return visible_; }
  /// Whether the box is shown with its Cancel button.
  [[nodiscard]] bool OffersCancel() const { return visible_ && offersCancel_; }
  /// Whether Cancel was pressed since the text was last set.
  [[nodiscard]] bool Cancelled() const { return ui_.StatusCancelled(); }

 private:
  UserInterface& ui_;
  bool visible_ = false;
  bool offersCancel_ = false;
};

}  // namespace qbx
