// The status box for longer work.

#pragma once

#include <QElapsedTimer>
#include <QString>

#include "diagnostics/diagnostics.h"

namespace qbx {

/// Shows the status box with its Cancel button when the work takes longer than a third of a second, so that shorter
/// work does not flicker. A status box that is already shown stays unchanged, and its Cancel button counts.
class WaitBox {
 public:
  WaitBox(const Diagnostics& diagnostics, QString text);
  ~WaitBox();
  WaitBox(const WaitBox&) = delete;
  WaitBox& operator=(const WaitBox&) = delete;

  /// Lets events run.
  /// \return false once Cancel was pressed
  [[nodiscard]] bool GoOn();
  /// Shows how far the work is, after the text. The box is updated about once a second.
  void ShowProgress(const QString& progress);

 private:
  void Show();

  Diagnostics diagnostics_;
  QString text_;
  QString progress_;
  bool isOfAnother_;
  bool shown_ = false;
  bool cancelled_ = false;
  QElapsedTimer since_;  // since the beginning, later since the last change of the box
};

}  // namespace qbx
