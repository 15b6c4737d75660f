#include "use_control.h"

#include <QtTest>
#include <QtWidgets>

#include "find_control.h"
#include "mouse_and_keys.h"
#include "scenario_error.h"

namespace qbx::scenario {
namespace {

// A tick box reacts where its mark and text are, not everywhere in its space.
QPoint PointOf(QWidget& widget) {
  if (auto* button = qobject_cast<QAbstractButton*>(&widget);
      button != nullptr &&
      (qobject_cast<QCheckBox*>(button) != nullptr || qobject_cast<QRadioButton*>(button) != nullptr)) {
    QStyleOptionButton option;
    option.initFrom(button);
    const auto part =
        qobject_cast<QCheckBox*>(button) != nullptr ? QStyle::SE_CheckBoxIndicator : QStyle::SE_RadioButtonIndicator;
    return button->style()->subElementRect(part, &option, button).center();
  }
  if (auto* box = qobject_cast<QGroupBox*>(&widget); box != nullptr && box->isCheckable()) {
    QStyleOptionGroupBox option;
    option.initFrom(box);
    option.subControls = QStyle::SC_GroupBoxCheckBox | QStyle::SC_GroupBoxLabel;
    option.text = box->title();
    return box->style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxCheckBox, box).center();
  }
  return widget.rect().center();
}

QWidget& EditOf(QWidget& widget, const QString& name) {
  if (qobject_cast<QLineEdit*>(&widget) != nullptr || qobject_cast<QTextEdit*>(&widget) != nullptr ||
      qobject_cast<QPlainTextEdit*>(&widget) != nullptr)
    return widget;
  if (auto* inner = widget.findChild<QLineEdit*>()) return *inner;
  throw ScenarioError(QStringLiteral("%1 takes no text.").arg(name));
}

// As somebody pastes it: what the box does to what is typed, it does to this.
void SetText(QWidget& widget, const QString& name, const QString& text) {
  QWidget& edit = EditOf(widget, name);
  MakeUsable(edit, name);
  if (edit.property("readOnly").toBool()) throw ScenarioError(QStringLiteral("%1 is read-only.").arg(name));
  edit.setFocus();
  QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
  if (text.isEmpty()) {
    QTest::keyClick(&edit, Qt::Key_Delete);
  } else {
    QApplication::clipboard()->setText(text);
    QTest::keyClick(&edit, Qt::Key_V, Qt::ControlModifier);
  }
  Settle();
}

void Type(QWidget& widget, const QString& name, const QString& text) {
  MakeUsable(widget, name);
  widget.setFocus();
  QWidget* focus = QApplication::focusWidget();
  TypeText(focus != nullptr && widget.isAncestorOf(focus) ? *focus : widget, text);
}

void Press(QWidget& widget, const QString& name, const Arguments& arguments) {
  MakeUsable(widget, name);
  widget.setFocus();
  const QPointer<QWidget> alive(&widget);
  for (int i = 0; i < NumberAt(arguments, 1, 1) && alive != nullptr; ++i) {
    QWidget* focus = QApplication::focusWidget();
    PressKeys(focus != nullptr && widget.isAncestorOf(focus) ? *focus : widget, TextAt(arguments, 0));
  }
}

void ChooseIn(QComboBox& combo, const QString& name, const QVariant& item) {
  MakeUsable(combo, name);
  const int index =
      IsNumber(item) ? item.toInt() : combo.findText(item.toString(), Qt::MatchExactly | Qt::MatchCaseSensitive);
  if (index < 0 || index >= combo.count()) {
    QStringList items;
    for (int i = 0; i < combo.count(); ++i)
      items += combo.itemText(i);
    throw ScenarioError(
        QStringLiteral("%1 has no \"%2\" but %3.").arg(name, item.toString(), items.join(QStringLiteral(", "))));
  }
  combo.setFocus();
  combo.showPopup();
  combo.view()->setCurrentIndex(combo.model()->index(index, combo.modelColumn(), combo.rootModelIndex()));
  QTest::keyClick(combo.view(), Qt::Key_Return);
  Settle();
}

void SelectTab(QWidget& widget, const QString& name, const QVariant& tab) {
  auto* holder = qobject_cast<QTabWidget*>(&widget);
  QTabBar* bar = holder != nullptr ? holder->tabBar() : qobject_cast<QTabBar*>(&widget);
  if (bar == nullptr) throw ScenarioError(QStringLiteral("%1 has no tabs.").arg(name));
  int index = IsNumber(tab) ? tab.toInt() - 1 : -1;
  for (int i = 0; i < bar->count() && !IsNumber(tab); ++i) {
    if (PlainCaption(bar->tabText(i)) == tab.toString()) index = i;
  }
  if (index < 0 || index >= bar->count() || !bar->isTabVisible(index))
    throw ScenarioError(QStringLiteral("%1 has no tab \"%2\".").arg(name, tab.toString()));
  if (!bar->isTabEnabled(index))
    throw ScenarioError(QStringLiteral("Tab \"%1\" of %2 is disabled.").arg(tab.toString(), name));
  ClickAt(*bar, bar->tabRect(index).center(), name);
}

void Tick(QWidget& widget, const QString& name, bool on) {
  const QVariant ticked = widget.property("checked");
  if (!ticked.isValid()) throw ScenarioError(QStringLiteral("%1 cannot be ticked.").arg(name));
  MakeUsable(widget, name);
  if (ticked.toBool() != on) ClickAt(widget, PointOf(widget), name);
}

void Trigger(QAction& action, const QString& name) {
  const QWidget* modal = QApplication::activeModalWidget();
  if (modal != nullptr)
    throw ScenarioError(QStringLiteral("%1 cannot be used while %2 is open.").arg(name, WindowName(*modal)));
  if (!action.isVisible()) throw ScenarioError(QStringLiteral("%1 is not visible.").arg(name));
  if (!action.isEnabled()) throw ScenarioError(QStringLiteral("%1 is disabled.").arg(name));
  action.trigger();
  Settle();
}

bool UseAction(QAction& action, const QString& name, const QString& wish) {
  if (wish == QLatin1String("trigger") || wish == QLatin1String("click")) {
    Trigger(action, name);
  } else if (wish == QLatin1String("tick")) {
    if (!action.isChecked()) Trigger(action, name);
  } else if (wish == QLatin1String("untick")) {
    if (action.isChecked()) Trigger(action, name);
  } else {
    return false;
  }
  return true;
}

bool UseMouse(QWidget& widget, const QString& name, const QString& action, const Arguments& arguments) {
  Click click;
  if (action == QLatin1String("doubleClick")) {
    click.twice = true;
  } else if (action == QLatin1String("rightClick")) {
    click.button = Qt::RightButton;
  } else if (action != QLatin1String("click")) {
    return false;
  }
  click.modifiers = ReadModifiers(TextAt(arguments, 0));
  const auto* area = qobject_cast<QAbstractScrollArea*>(&widget);
  QWidget& hit = area != nullptr ? *area->viewport() : widget;
  ClickAt(hit, PointOf(hit), name, click);
  return true;
}

bool UseWidget(QWidget& widget, const QString& name, const QString& action, const Arguments& arguments) {
  if (UseMouse(widget, name, action, arguments)) return true;
  if (action == QLatin1String("type")) {
    Type(widget, name, TextAt(arguments, 0));
  } else if (action == QLatin1String("setText")) {
    SetText(widget, name, TextAt(arguments, 0));
  } else if (action == QLatin1String("press")) {
    Press(widget, name, arguments);
  } else if (action == QLatin1String("focus")) {
    MakeUsable(widget, name);
    widget.setFocus();
    Settle();
  } else if (action == QLatin1String("tick") || action == QLatin1String("untick")) {
    Tick(widget, name, action == QLatin1String("tick"));
  } else if (action == QLatin1String("selectTab")) {
    SelectTab(widget, name, arguments.value(0));
  } else if (action == QLatin1String("close")) {
    widget.window()->close();
    Settle();
  } else if (action == QLatin1String("resize")) {
    widget.window()->resize(NumberAt(arguments, 0), NumberAt(arguments, 1));
    Settle();
  } else if (auto* combo = qobject_cast<QComboBox*>(&widget); combo != nullptr && action == QLatin1String("choose")) {
    ChooseIn(*combo, name, arguments.value(0));
  } else {
    return false;
  }
  return true;
}

}  // namespace

void UseControl(QObject& control, const QString& name, const QString& action, const Arguments& arguments) {
  if (auto* entry = qobject_cast<QAction*>(&control)) {
    if (UseAction(*entry, name, action)) return;
  } else {
    auto& widget = static_cast<QWidget&>(control);
    auto* view = qobject_cast<QAbstractItemView*>(&widget);
    if (view != nullptr && UseItems(*view, name, action, arguments)) return;
    if (UseWidget(widget, name, action, arguments)) return;
  }
  throw ScenarioError(QStringLiteral("%1 (%2) does not take \"%3\".")
                          .arg(name, QString::fromLatin1(control.metaObject()->className()), action));
}

}  // namespace qbx::scenario
