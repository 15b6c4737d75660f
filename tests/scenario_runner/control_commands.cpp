#include <QtTest>

#include "commands.h"
#include "control.h"
#include "find_control.h"
#include "keyboard_faults.h"
#include "scenario_error.h"
#include "stage.h"

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

}  // namespace

class ControlCommands final : public QObject {
  Q_OBJECT
 public:
  explicit ControlCommands(Stage& stage) : stage_(stage) {}

  Q_INVOKABLE bool exists(const QString& name) const { return TryFindControl(name) != nullptr; }
  Q_INVOKABLE QStringList windows() const;
  Q_INVOKABLE QStringList controlNames(const QString& window) const;
  Q_INVOKABLE bool closeWindow(const QVariant& window) const;
  Q_INVOKABLE void screenshot(const QString& name, const QVariant& window) const;
  Q_INVOKABLE void wait(int milliseconds) const { QTest::qWait(milliseconds); }
  Q_INVOKABLE QString focusedControl() const { return NearestName(QApplication::focusWidget()); }
  Q_INVOKABLE QStringList keyboardFaults() const { return KeyboardFaults(*Focus().window()); }
  Q_INVOKABLE void type(const QString& text) const { TypeText(Focus(), text); }
  Q_INVOKABLE QString clipboard() const { return PlainLines(QApplication::clipboard()->text()); }
  Q_INVOKABLE void setClipboard(const QString& text) const { QApplication::clipboard()->setText(text); }

 public Q_SLOTS:
  void press(const QString& keys) const { PressKeys(Focus(), keys); }
  QVariantMap controlMembers() const { return Control::Members(); }
  void find(const QString& name) const { (void)FindControl(name); }
  QVariant read(const QString& name, const QString& what, const QVariant& arguments) const {
    return Control::Of(FindControl(name), name)->Read(what, arguments.toList());
  }
  void act(const QString& name, const QString& action, const QVariant& arguments) const {
    Control::Of(FindControl(name), name)->Use(action, arguments.toList());
  }

 private:
  Stage& stage_;
};

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

// Like the cross of the title bar. A window behind a modal one cannot be reached.
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

std::unique_ptr<QObject> MakeControlCommands(Stage& stage) {
  return std::make_unique<ControlCommands>(stage);
}

}  // namespace qbx::scenario

#include "control_commands.moc"
