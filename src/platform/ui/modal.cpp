#include "platform/ui/modal.h"

#include <QtWidgets>

namespace qbx {

int ShowModal(QDialog& dialog) {
  const QPointer<QWidget> activeBefore = QApplication::activeWindow();
  const int result = dialog.exec();
  // Only when no window has it: the user may have gone to another one.
  if (QApplication::activeWindow() == nullptr && activeBefore != nullptr && activeBefore->isVisible())
    activeBefore->activateWindow();
  return result;
}

}  // namespace qbx
