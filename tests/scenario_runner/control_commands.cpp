#include "control_commands.h"

#include "scenario_error.h"

namespace qbx::scenario {
namespace {

QWidget& FocusOf(QWidget& window) {
  return window.focusWidget() != nullptr ? *window.focusWidget() : window;
}

}  // namespace

QWidget& ControlCommands::Focus() {
  if (QWidget* popup = QApplication::activePopupWidget()) return FocusOf(*popup);
  const QList<QWidget*> windows = VisibleWindows();
  if (windows.isEmpty()) throw ScenarioError(QStringLiteral("No window is open that could take keys."));
  // Keys are for a modal window, even if it has just opened and is not active yet.
  QWidget* focus = QApplication::focusWidget();
  const QWidget* modal = QApplication::activeModalWidget();
  const auto reachable = [modal](const QWidget& window) {
    return modal == nullptr || &window == modal || window.parentWidget() == modal;
  };
  return focus != nullptr && reachable(*focus->window()) ? *focus : FocusOf(*windows.constFirst());
}

QStringList ControlCommands::windows() const {
  QStringList names;
  for (const QWidget* window : VisibleWindows())
    names += WindowName(*window);
  return names;
}

QStringList ControlCommands::controlNames(const QString& window) const {
  if (!window.isEmpty()) return ControlNames(FindWindow(window));
  const QList<QWidget*> windows = VisibleWindows();
  return windows.isEmpty() ? QStringList() : ControlNames(*windows.constFirst());
}

// Like a click on the cross of the title bar. Refuses a window behind a modal one.
bool ControlCommands::closeWindow(const QVariant& name) const {
  QWidget& window = FindWindow(name.isValid() ? name.toString() : QStringLiteral("frmMain"));
  const QWidget* modal = QApplication::activeModalWidget();
  if (modal != nullptr && modal != &window)
    throw ScenarioError(
        QStringLiteral("%1 cannot be closed while %2 is open.").arg(WindowName(window), WindowName(*modal)));
  const QPointer<QWidget> alive(&window);
  window.close();
  Settle();
  return alive == nullptr || !alive->isVisible();
}

void ControlCommands::screenshot(const QString& name, const QVariant& window) const {
  const QString file = stage_.ScreenshotFile(name);
  if (file.isEmpty()) return;
  const QList<QWidget*> windows = VisibleWindows();
  if (windows.isEmpty()) throw ScenarioError(QStringLiteral("No window is open."));
  QWidget* menu = QApplication::activePopupWidget();
  QWidget& topmost = menu != nullptr ? *menu : *windows.constFirst();
  QWidget& shown = window.isValid() ? FindWindow(window.toString()) : topmost;
  Settle();
  if (!shown.grab().save(file)) throw ScenarioError(QStringLiteral("%1 cannot be written.").arg(file));
}

}  // namespace qbx::scenario
