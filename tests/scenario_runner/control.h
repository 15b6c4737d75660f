// A control for scenarios: what a scenario can read and do, by kind of control.

#pragma once

#include <QtWidgets>
#include <memory>

#include "bridge.h"
#include "mouse_and_keys.h"

namespace qbx::scenario {

/// tests/scenarios/README.md lists its methods in the meta-object system. A method without a result is an action. A
/// method without parameters that returns a QVariant is a property. An invalid QVariant means that this kind of control
/// lacks the property. Properties that Qt has itself are in QtProperties.
class Control : public QObject {
  Q_OBJECT
 public:
  Control(QObject& object, QString name) : object_(object), name_(std::move(name)) {}

  /// Makes the right kind for a control or menu entry.
  [[nodiscard]] static std::unique_ptr<Control> Of(QObject& object, const QString& name);
  /// The names of all methods of all kinds: {"readable", "asked", "actions"}.
  [[nodiscard]] static QVariantMap Members();

  /// \throws ScenarioError when this kind lacks it
  [[nodiscard]] QVariant Read(const QString& what, const Arguments& arguments);
  /// \throws ScenarioError when this kind lacks it, or a person could not do it now
  void Use(const QString& action, const Arguments& arguments);

  Q_INVOKABLE QVariant text() const;
  Q_INVOKABLE QVariant caption() const;
  Q_INVOKABLE QVariant kind() const { return QString::fromLatin1(object_.metaObject()->className()); }
  Q_INVOKABLE QVariant mnemonic() const;

 protected:
  [[nodiscard]] const QString& Name() const { return name_; }
  /// \throws ScenarioError always
  [[noreturn]] void DoesNotTake(const QString& action) const;

 private:
  /// A property of Qt: of the control, or of the line edit inside it.
  [[nodiscard]] QVariant QtProperty(const QString& what) const;

  QObject& object_;
  QString name_;
};

class ActionControl final : public Control {
  Q_OBJECT
 public:
  ActionControl(QAction& action, const QString& name) : Control(action, name), action_(action) {}

  Q_INVOKABLE void trigger();
  Q_INVOKABLE void click() { trigger(); }
  Q_INVOKABLE void tick() { SetTicked(true); }
  Q_INVOKABLE void untick() { SetTicked(false); }

 private:
  void SetTicked(bool on) {
    if (action_.isChecked() != on) trigger();
  }

  QAction& action_;
};

class WidgetControl : public Control {
  Q_OBJECT
 public:
  WidgetControl(QWidget& widget, const QString& name) : Control(widget, name), widget_(widget) {}

  Q_INVOKABLE QVariant focused() const;
  Q_INVOKABLE QVariant colour() const { return widget_.palette().color(widget_.foregroundRole()).name(); }
  Q_INVOKABLE QVariant background() const { return widget_.palette().color(widget_.backgroundRole()).name(); }
  Q_INVOKABLE QVariant bold() const { return widget_.font().bold(); }
  Q_INVOKABLE QVariant size() const { return QVariantMap{{"width", widget_.width()}, {"height", widget_.height()}}; }
  /// All text in a window or frame.
  Q_INVOKABLE QStringList visibleTexts() const;

  Q_INVOKABLE void click(const QString& keys);
  Q_INVOKABLE void doubleClick(const QString& keys);
  Q_INVOKABLE void rightClick(const QString& keys);
  Q_INVOKABLE void type(const QString& text);
  Q_INVOKABLE void setText(const QString& text);
  Q_INVOKABLE void press(const QString& keys, const QVariant& times);
  Q_INVOKABLE void focus();
  Q_INVOKABLE void tick() { SetTicked(true); }
  Q_INVOKABLE void untick() { SetTicked(false); }
  Q_INVOKABLE void selectTab(const QVariant& tab);
  Q_INVOKABLE void close();
  Q_INVOKABLE void resize(int width, int height);

 private:
  /// The widget that gets keys: the part of the control that has the focus, or the control itself.
  [[nodiscard]] QWidget& KeyTarget() const;
  void SetTicked(bool on);

  QWidget& widget_;
};

class ComboControl final : public WidgetControl {
  Q_OBJECT
 public:
  ComboControl(QComboBox& combo, const QString& name) : WidgetControl(combo, name), combo_(combo) {}

  Q_INVOKABLE QVariant selectedIndex() const { return combo_.currentIndex(); }
  Q_INVOKABLE QVariant selectedText() const { return combo_.currentText(); }
  Q_INVOKABLE QVariant items() const;
  Q_INVOKABLE void choose(const QVariant& item);

 private:
  QComboBox& combo_;
};

class TabsControl final : public WidgetControl {
  Q_OBJECT
 public:
  TabsControl(QWidget& widget, QTabBar& tabs, const QString& name) : WidgetControl(widget, name), tabs_(tabs) {}

  Q_INVOKABLE QVariant currentTab() const { return tabs_.currentIndex() + 1; }
  Q_INVOKABLE QVariant tabs() const;
  Q_INVOKABLE QVariant tabEnabled(int tab) const { return tabs_.isEnabled() && tabs_.isTabEnabled(tab - 1); }

 private:
  QTabBar& tabs_;
};

}  // namespace qbx::scenario
