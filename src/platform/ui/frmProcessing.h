// The status box: what a long operation is doing.

#pragma once

#include <QCloseEvent>
#include <QEvent>
#include <QKeyEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <memory>

#include "platform/user_interface.h"

namespace Ui {
class frmProcessing;
}

namespace qbx {

/// A window above all others that does not keep the focus: it opens without being activated, and when it closes the
/// window that was active before is activated. Cancel is pressed with the mouse, or with Esc in any window.
class frmProcessing : public QWidget {
  Q_OBJECT
 public:
  frmProcessing();
  ~frmProcessing() override;

  /// Shows the box in the middle of its owner, or only changes its text when it is shown already. Clears the cancel
  /// flag.
  /// \param owner  the window it belongs to; may be null
  void ShowView(const StatusView& view, QWidget* owner);
  void CloseBox();
  [[nodiscard]] bool Cancelled() const { return cancelled_; }
  /// Sets the cancel flag if the box offers Cancel.
  void Cancel();
  void BringToFront();

 Q_SIGNALS:
  /// The user closes the box by a right click on its text.
  void Dismissed();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void Place(const QWidget* owner);

  std::unique_ptr<Ui::frmProcessing> ui_;
  QPointer<QWidget> activeBefore_;
  bool cancelled_ = false;
};

}  // namespace qbx
