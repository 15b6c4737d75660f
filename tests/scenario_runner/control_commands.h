// What a scenario can do with windows, controls, keys and the clipboard.

#pragma once

#include <QtTest>

#include "control.h"
#include "find_control.h"
#include "keyboard_faults.h"
#include "stage.h"

namespace qbx::scenario {

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
  /// The widget that has the focus, or gets it with the next key.
  [[nodiscard]] static QWidget& Focus();

  Stage& stage_;
};

}  // namespace qbx::scenario
