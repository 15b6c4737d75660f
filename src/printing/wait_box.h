// The status box of what takes a while.

#pragma once

#include <QElapsedTimer>
#include <QString>

#include "diagnostics/diagnostics.h"

namespace qbx {

/// Shows the status box with its Cancel button once the work takes longer than a third of a second; shorter work flickers. Where such a box is shown already,
/// that one stays as it is, and its Cancel counts.
class WaitBox {
 public:
  WaitBox(const Diagnostics& diagnostics, QString text);
  ~WaitBox();
  WaitBox(const WaitBox&) = delete;
  WaitBox& operator=(const WaitBox&) = delete;

  /// Lets events run.
  /// \return false once Cancel was pressed
  [[nodiscard]] bool GoOn();
  /// How far the work is, behind the text. It is shown about once a second.
  void ShowProgress(const QString& progress);

 private:
  void Show();

  Diagnostics diagnostics_;
  QString text_;
  QString progress_;
  bool isOfAnother_;
  bool shown_ = false;
  bool cancelled_ = false;
  QElapsedTimer since_;  // the beginning, then since the box was changed last
};

}  // namespace qbx
