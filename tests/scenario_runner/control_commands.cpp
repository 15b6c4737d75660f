#include "control_commands.h"

#include <QtTest>
#include <QtWidgets>

#include "find_control.h"
#include "keyboard_faults.h"
#include "mouse_and_keys.h"
#include "read_control.h"
#include "scenario_error.h"
#include "stage.h"
#include "use_control.h"

namespace qbx::scenario {
namespace {

QWidget& FocusOf(QWidget& window) {
  return window.focusWidget() != nullptr ? *window.focusWidget() : window;
}

QWidget& Focus() {
  if (QWidget* popup = QApplication::activePopupWidget()) return FocusOf(*popup);
  const QList<QWidget*> windows = VisibleWindows();
  if (windows.isEmpty()) throw ScenarioError(QStringLiteral("No window is open that could take keys."));
  // A modal window that has just opened may not be active yet; keys are for it all the same.
  QWidget* focus = QApplication::focusWidget();
  const QWidget* modal = QApplication::activeModalWidget();
  const auto reachable = [modal](const QWidget& window) {
    return modal == nullptr || &window == modal || window.parentWidget() == modal;
  };
  return focus != nullptr && reachable(*focus->window()) ? *focus : FocusOf(*windows.constFirst());
}

QVariant Names(const Arguments& arguments) {
  const QString window = TextAt(arguments, 0);
  if (!window.isEmpty()) return ControlNames(FindWindow(window));
  const QList<QWidget*> windows = VisibleWindows();
  return windows.isEmpty() ? QStringList() : ControlNames(*windows.constFirst());
}

// Like the cross of the title bar. A window behind a modal one cannot be reached.
QVariant CloseWindow(const Arguments& arguments) {
  QWidget& window = FindWindow(TextAt(arguments, 0));
  const QWidget* modal = QApplication::activeModalWidget();
  if (modal != nullptr && modal != &window)
    throw ScenarioError(
        QStringLiteral("%1 cannot be closed while %2 is open.").arg(WindowName(window), WindowName(*modal)));
  const QPointer<QWidget> alive(&window);
  window.close();
  Settle();
  return alive == nullptr || !alive->isVisible();
}

QVariant Screenshot(const Arguments& arguments, const Stage& stage) {
  const QString file = stage.ScreenshotFile(TextAt(arguments, 0));
  if (file.isEmpty()) return {};
  const QList<QWidget*> windows = VisibleWindows();
  if (windows.isEmpty()) throw ScenarioError(QStringLiteral("No window is open."));
  QWidget* menu = QApplication::activePopupWidget();
  QWidget& topmost = menu != nullptr ? *menu : *windows.constFirst();
  QWidget& window = arguments.size() > 1 ? FindWindow(TextAt(arguments, 1)) : topmost;
  Settle();
  if (!window.grab().save(file)) throw ScenarioError(QStringLiteral("%1 cannot be written.").arg(file));
  return {};
}

void AddWindowCommands(Bridge& bridge, Stage& stage) {
  bridge.Add(QStringLiteral("windows"), [](const Arguments&) -> QVariant {
    QStringList names;
    for (const QWidget* window : VisibleWindows())
      names += WindowName(*window);
    return names;
  });
  bridge.Add(QStringLiteral("controlNames"), Names);
  bridge.Add(QStringLiteral("closeWindow"), CloseWindow);
  bridge.Add(QStringLiteral("screenshot"),
             [&stage](const Arguments& arguments) { return Screenshot(arguments, stage); });
  bridge.Add(QStringLiteral("wait"), [](const Arguments& arguments) -> QVariant {
    QTest::qWait(NumberAt(arguments, 0));
    return {};
  });
}

void AddKeyCommands(Bridge& bridge) {
  bridge.Add(QStringLiteral("focusedControl"),
             [](const Arguments&) -> QVariant { return NearestName(QApplication::focusWidget()); });
  bridge.Add(QStringLiteral("keyboardFaults"),
             [](const Arguments&) -> QVariant { return KeyboardFaults(*Focus().window()); });
  bridge.Add(QStringLiteral("press"), [](const Arguments& arguments) -> QVariant {
    PressKeys(Focus(), TextAt(arguments, 0));
    return {};
  });
  bridge.Add(QStringLiteral("type"), [](const Arguments& arguments) -> QVariant {
    TypeText(Focus(), TextAt(arguments, 0));
    return {};
  });
  bridge.Add(QStringLiteral("clipboard"),
             [](const Arguments&) -> QVariant { return PlainLines(QApplication::clipboard()->text()); });
  bridge.Add(QStringLiteral("setClipboard"), [](const Arguments& arguments) -> QVariant {
    QApplication::clipboard()->setText(TextAt(arguments, 0));
    return {};
  });
}

}  // namespace

void AddControlCommands(Bridge& bridge, Stage& stage) {
  bridge.Add(QStringLiteral("find"), [](const Arguments& arguments) -> QVariant {
    (void)FindControl(TextAt(arguments, 0));
    return {};
  });
  bridge.Add(QStringLiteral("exists"),
             [](const Arguments& arguments) -> QVariant { return TryFindControl(TextAt(arguments, 0)) != nullptr; });
  bridge.Add(QStringLiteral("read"), [](const Arguments& arguments) {
    const QString name = TextAt(arguments, 0);
    return ReadControl(FindControl(name), name, TextAt(arguments, 1), arguments.mid(2));
  });
  bridge.Add(QStringLiteral("act"), [](const Arguments& arguments) -> QVariant {
    const QString name = TextAt(arguments, 0);
    UseControl(FindControl(name), name, TextAt(arguments, 1), arguments.mid(2));
    return {};
  });
  AddWindowCommands(bridge, stage);
  AddKeyCommands(bridge);
}

}  // namespace qbx::scenario
