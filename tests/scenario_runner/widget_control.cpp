// Actions on controls that are no lists: mouse, keys, ticks, tabs, and drop-down lists.

#include <QtTest>

#include "control.h"
#include "find_control.h"
#include "scenario_error.h"

namespace qbx::scenario {
namespace {

// A tick box only reacts on its mark and text.
QPoint PointOf(const QWidget& widget) {
  if (IsOneOf<QCheckBox, QRadioButton>(&widget)) {
    QStyleOptionButton option;
    option.initFrom(&widget);
    const auto part = IsOneOf<QCheckBox>(&widget) ? QStyle::SE_CheckBoxIndicator : QStyle::SE_RadioButtonIndicator;
    return widget.style()->subElementRect(part, &option, &widget).center();
  }
  if (const auto* box = qobject_cast<const QGroupBox*>(&widget); box != nullptr && box->isCheckable()) {
    QStyleOptionGroupBox option;
    option.initFrom(box);
    option.subControls = QStyle::SC_GroupBoxCheckBox | QStyle::SC_GroupBoxLabel;
    option.text = box->title();
    return box->style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxCheckBox, box).center();
  }
  return widget.rect().center();
}

void ClickOn(QWidget& widget, const QString& name, const Click& click) {
  const auto* area = qobject_cast<QAbstractScrollArea*>(&widget);
  QWidget& hit = area != nullptr ? *area->viewport() : widget;
  ClickAt(hit, PointOf(hit), name, click);
}

QWidget& EditOf(QWidget& widget, const QString& name) {
  if (IsOneOf<QLineEdit, QTextEdit, QPlainTextEdit>(&widget)) return widget;
  if (auto* inner = widget.findChild<QLineEdit*>()) return *inner;
  throw ScenarioError(QStringLiteral("%1 takes no text.").arg(name));
}

}  // namespace

QVariant WidgetControl::focused() const {
  const QWidget* focus = QApplication::focusWidget();
  return focus != nullptr && (focus == &widget_ || widget_.isAncestorOf(focus));
}

void WidgetControl::click(const QString& keys) {
  ClickOn(widget_, Name(), {.modifiers = ReadModifiers(keys)});
}

void WidgetControl::doubleClick(const QString& keys) {
  ClickOn(widget_, Name(), {.modifiers = ReadModifiers(keys), .twice = true});
}

void WidgetControl::rightClick(const QString& keys) {
  ClickOn(widget_, Name(), {.button = Qt::RightButton, .modifiers = ReadModifiers(keys)});
}

QWidget& WidgetControl::KeyTarget() const {
  QWidget* focus = QApplication::focusWidget();
  return focus != nullptr && widget_.isAncestorOf(focus) ? *focus : widget_;
}

void WidgetControl::type(const QString& text) {
  MakeUsable(widget_, Name());
  widget_.setFocus();
  TypeText(KeyTarget(), text);
}

// Pastes the text, so that the box treats it like typed text.
void WidgetControl::setText(const QString& text) {
  QWidget& edit = EditOf(widget_, Name());
  MakeUsable(edit, Name());
  if (edit.property("readOnly").toBool()) throw ScenarioError(QStringLiteral("%1 is read-only.").arg(Name()));
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

void WidgetControl::press(const QString& keys, const QVariant& times) {
  MakeUsable(widget_, Name());
  widget_.setFocus();
  const QPointer<QWidget> alive(&widget_);
  for (int i = 0; i < (IsNumber(times) ? times.toDouble() : 1) && alive != nullptr; ++i)
    PressKeys(KeyTarget(), keys);
}

void WidgetControl::focus() {
  MakeUsable(widget_, Name());
  widget_.setFocus();
  Settle();
}

void WidgetControl::SetTicked(bool on) {
  const QVariant ticked = widget_.property("checked");
  if (!ticked.isValid()) throw ScenarioError(QStringLiteral("%1 cannot be ticked.").arg(Name()));
  MakeUsable(widget_, Name());
  if (ticked.toBool() != on) ClickAt(widget_, PointOf(widget_), Name());
}

void WidgetControl::selectTab(const QVariant& tab) {
  auto* holder = qobject_cast<QTabWidget*>(&widget_);
  QTabBar* bar = holder != nullptr ? holder->tabBar() : qobject_cast<QTabBar*>(&widget_);
  if (bar == nullptr) throw ScenarioError(QStringLiteral("%1 has no tabs.").arg(Name()));
  int index = IsNumber(tab) ? tab.toInt() - 1 : -1;
  for (int i = 0; i < bar->count() && !IsNumber(tab); ++i) {
    if (PlainCaption(bar->tabText(i)) == tab.toString()) index = i;
  }
  if (index < 0 || index >= bar->count() || !bar->isTabVisible(index))
    throw ScenarioError(QStringLiteral("%1 has no tab \"%2\".").arg(Name(), tab.toString()));
  if (!bar->isTabEnabled(index))
    throw ScenarioError(QStringLiteral("Tab \"%1\" of %2 is disabled.").arg(tab.toString(), Name()));
  ClickAt(*bar, bar->tabRect(index).center(), Name());
}

void WidgetControl::close() {
  widget_.window()->close();
  Settle();
}

void WidgetControl::resize(int width, int height) {
  widget_.window()->resize(width, height);
  Settle();
}

QVariant ComboControl::items() const {
  QStringList items;
  for (int i = 0; i < combo_.count(); ++i)
    items += combo_.itemText(i);
  return items;
}

void ComboControl::choose(const QVariant& item) {
  MakeUsable(combo_, Name());
  const int index =
      IsNumber(item) ? item.toInt() : combo_.findText(item.toString(), Qt::MatchExactly | Qt::MatchCaseSensitive);
  if (index < 0 || index >= combo_.count())
    throw ScenarioError(QStringLiteral("%1 has no \"%2\" but %3.")
                            .arg(Name(), item.toString(), items().toStringList().join(QStringLiteral(", "))));
  combo_.setFocus();
  combo_.showPopup();
  combo_.view()->setCurrentIndex(combo_.model()->index(index, combo_.modelColumn(), combo_.rootModelIndex()));
  QTest::keyClick(combo_.view(), Qt::Key_Return);
  Settle();
}

QVariant TabsControl::tabs() const {
  QStringList captions;
  for (int i = 0; i < tabs_.count(); ++i) {
    if (tabs_.isTabVisible(i)) captions += PlainCaption(tabs_.tabText(i));
  }
  return captions;
}

}  // namespace qbx::scenario
