#include "marketing/ui/wizard_page.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QTableView>

namespace qbx {

void WizardPage::keyPressEvent(QKeyEvent* event) {
  const bool enters = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  // A grid handles these keys itself.
  if (!enters || qobject_cast<QTableView*>(focusWidget()) != nullptr) return QWidget::keyPressEvent(event);
  auto* pressed = qobject_cast<QPushButton*>(focusWidget());
  for (QPushButton* button : findChildren<QPushButton*>()) {
    if (pressed == nullptr && button->isDefault()) pressed = button;
  }
  if (pressed != nullptr && pressed->isEnabled()) pressed->click();
}

}  // namespace qbx
