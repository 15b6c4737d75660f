// A control as a scenario has it: what can be seen of it and done to it, by kind of control.

#pragma once

#include <QtWidgets>
#include <memory>

#include "bridge.h"
#include "mouse_and_keys.h"

namespace qbx::scenario {

/// The methods that it gives to the meta-object system are what tests/scenarios/README.md lists: one that returns
/// nothing is an action, one that returns a QVariant and takes nothing is read as a property. An invalid QVariant says
/// that this kind of control has no such thing. What Qt knows as a property of the control itself is not written down
/// again, see QtProperties.
class Control : public QObject {
  Q_OBJECT
 public:
  Control(QObject& object, QString name) : object_(object), name_(std::move(name)) {}

  /// A control or menu entry that was found, as what it is.
  [[nodiscard]] static std::unique_ptr<Control> Of(QObject& object, const QString& name);
  /// Names of all that any kind has: {"readable", "asked", "actions"}.
  [[nodiscard]] static QVariantMap Members();

  /// \throws ScenarioError when this kind does not have it
  [[nodiscard]] QVariant Read(const QString& what, const Arguments& arguments);
  /// \throws ScenarioError when this kind does not take it, or a person could not do it now
  void Use(const QString& action, const Arguments& arguments);

  Q_INVOKABLE QVariant text() const;
  Q_INVOKABLE QVariant caption() const;
  Q_INVOKABLE QVariant kind() const { return QString::fromLatin1(object_.metaObject()->className()); }
  Q_INVOKABLE QVariant mnemonic() const;

 protected:
  [[nodiscard]] const QString& Name() const { return name_; }
  /// \throws ScenarioError that says so
  [[noreturn]] void DoesNotTake(const QString& action) const;

 private:
  /// What Qt calls it, asked of the control, or of the line edit inside one that is made of several.
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
  /// Everything that can be read in a window or frame, for a look at the whole of it.
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
  /// What takes the keys: the part of the control that has the focus, or all of it.
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
