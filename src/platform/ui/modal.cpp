#include "platform/ui/modal.h"

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QWidget>

namespace qbx {

int ShowModal(QDialog& dialog) {
  QPointer<QWidget> before = QApplication::activeWindow();
  if (before == nullptr && dialog.parentWidget() != nullptr) before = dialog.parentWidget()->window();
  const int result = dialog.exec();
  // Only when no other window is active: the user may have gone to one.
  const QWidget* active = QApplication::activeWindow();
  if ((active == nullptr || active == &dialog) && before != nullptr && before->isVisible()) before->activateWindow();
  return result;
}

}  // namespace qbx
