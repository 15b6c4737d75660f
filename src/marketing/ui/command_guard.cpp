#include "marketing/ui/command_guard.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabBar>
#include <QWidget>

namespace qbx {

CommandGuard::CommandGuard(QMainWindow& window) : focus_(window.focusWidget()) {
  const auto disable = [this](QWidget* widget) {
    // A widget that is disabled only because its parent is would be enabled for good.
    if (widget->testAttribute(Qt::WA_ForceDisabled) || !widget->isEnabled()) return;
    widget->setEnabled(false);
    widgets_.append(widget);
  };
  for (QPushButton* button : window.findChildren<QPushButton*>())
    disable(button);
  for (QTabBar* bar : window.findChildren<QTabBar*>())
    disable(bar);
  for (QMenu* menu : window.menuBar()->findChildren<QMenu*>()) {
    for (QAction* action : menu->actions()) {
      if (!action->isEnabled() || action->isSeparator()) continue;
      action->setEnabled(false);
      actions_.append(action);
    }
  }
}

CommandGuard::~CommandGuard() {
  for (const QPointer<QWidget>& widget : widgets_)
    if (widget) widget->setEnabled(true);
  for (const QPointer<QAction>& action : actions_)
    if (action) action->setEnabled(true);
  if (focus_ && focus_->isVisible() && focus_->window()->focusWidget() != focus_) focus_->setFocus();
}

}  // namespace qbx
