// The status box for longer work.

#pragma once

#include <QElapsedTimer>
#include <QString>

#include "diagnostics/diagnostics.h"

namespace qbx {

/// Shows the status box with its Cancel button when the work takes longer than a moment, so that shorter work does not
/// flicker. A status box with Cancel that is already shown stays unchanged, and its Cancel button counts.
class WaitBox {
 public:
  static constexpr int kShowAfter = 330;

  /// \param showAfter  milliseconds; of work that cannot be cancelled it takes longer
  WaitBox(const Diagnostics& diagnostics, QString text, int showAfter = kShowAfter);
  ~WaitBox();
  WaitBox(const WaitBox&) = delete;
  WaitBox& operator=(const WaitBox&) = delete;

  /// Lets events run.
  /// \param mayCancel  false: the work cannot be cancelled now. The box has no Cancel then, and leaves any other alone
  /// \return false once Cancel was pressed, while the work can be cancelled
  [[nodiscard]] bool GoOn(bool mayCancel = true);
  [[nodiscard]] bool Cancelled() const { return cancelled_; }
  /// Acts as if Cancel had been pressed.
  void Cancel() { cancelled_ = true; }
  /// Shows how far the work is, after the text. The box is updated about once a second.
  void ShowProgress(const QString& progress);

 private:
  void Show();

  Diagnostics diagnostics_;
  QString text_;
  QString progress_;
  int showAfter_;
  bool isOfAnother_;
  bool shown_ = false;
  bool offersCancel_ = true;
  bool cancelled_ = false;
  QElapsedTimer since_;  // since the beginning, later since the last change of the box
};

}  // namespace qbx
