#include "keyboard_faults.h"

#include <QtTest>
#include <QtWidgets>

#include "find_control.h"

namespace qbx::scenario {
namespace {

bool IsEditOrList(const QWidget* widget) {
  return IsOneOf<QComboBox, QLineEdit, QAbstractSpinBox, QTabBar, QAbstractItemView, QTextEdit, QPlainTextEdit>(widget);
}

/// Whether a person uses the widget, and it is not an inner part of a Qt control, such as the button that clears a box.
bool CanBeUsed(const QWidget& widget) {
  if (!widget.isVisible() || !widget.isEnabled()) return false;
  for (const QWidget* at = widget.parentWidget(); at != nullptr && !at->isWindow(); at = at->parentWidget())
    if (IsEditOrList(at)) return false;
  const bool takesTab = (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.focusProxy() == nullptr;
  return takesTab || IsEditOrList(&widget) || IsOneOf<QAbstractButton>(&widget);
}

/// The order of controls in one frame: along a row, then down.
bool InReadingOrder(const QWidget& first, const QWidget& second) {
  if (first.isAncestorOf(&second) || second.isAncestorOf(&first)) return first.isAncestorOf(&second);
  const QWidget* a = &first;
  const QWidget* b = &second;
  while (!a->parentWidget()->isAncestorOf(b))
    a = a->parentWidget();
  while (b->parentWidget() != a->parentWidget())
    b = b->parentWidget();
  const auto crosses = [](const QRect& row, int y) { return row.top() <= y && y <= row.bottom(); };
  const QRect from = a->geometry();
  const QRect to = b->geometry();
  const bool sameRow = crosses(from, to.center().y()) || crosses(to, from.center().y());
  return sameRow ? from.left() <= to.left() : from.top() < to.top();
}

QStringList OrderFaults(const QWidgetList& walk) {
  QStringList faults;
  for (qsizetype i = 0; i < walk.size(); ++i) {
    const QWidget* next = walk[(i + 1) % walk.size()];
    if (!InReadingOrder(*walk[i], *next))
      faults += QStringLiteral("Tab goes back from %1 to %2.").arg(NearestName(walk[i]), NearestName(next));
  }
  return faults.size() > 1 ? faults : QStringList();  // after the last one it returns to the first
}

/// The captions of a widget that can have an accelerator.
QStringList Captions(const QWidget* widget) {
  QStringList captions;
  const auto* label = qobject_cast<const QLabel*>(widget);
  if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) {
    for (int i = 0; i < tabs->count(); ++i)
      captions += tabs->tabText(i);
  } else if (const auto* menus = qobject_cast<const QMenuBar*>(widget)) {
    for (const QAction* menu : menus->actions())
      captions += menu->text();
  } else if (IsOneOf<QAbstractButton, QGroupBox>(widget) || (label && label->buddy() && label->buddy()->isVisible())) {
    captions += widget->property(IsOneOf<QGroupBox>(widget) ? "title" : "text").toString();
  }
  return captions;
}

bool NeedsLetter(const QWidget* widget, const QString& caption) {
  const bool known = caption == QLatin1String("OK") || caption == QLatin1String("Cancel");  // Return and Esc
  return IsOneOf<QPushButton, QCheckBox, QLabel>(widget) && caption.contains(QRegularExpression("[a-z]")) && !known;
}

QStringList LetterFaults(const QWidget& window) {
  QStringList faults;
  QHash<QString, QString> owners;
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    const bool shown = widget->window() == &window && widget->isVisible();
    for (const QString& caption : shown ? Captions(widget) : QStringList()) {
      const QString name = NearestName(widget);
      const QString keys = QKeySequence::mnemonic(caption).toString(QKeySequence::PortableText);
      if (keys.isEmpty() && NeedsLetter(widget, caption)) faults += QStringLiteral("%1 has no letter.").arg(name);
      if (owners.contains(keys)) faults += QStringLiteral("%1 is %2 and %3.").arg(keys, owners[keys], name);
      if (!keys.isEmpty()) owners[keys] = name;
    }
  }
  return faults;
}

QString SpokenName(const QWidget& window, const QWidget* control) {
  QString name = control->accessibleName() + control->property("text").toString().trimmed();
  if (IsEditOrList(control)) name = control->accessibleName();
  if (IsOneOf<QTabBar>(control)) name = control->parentWidget()->accessibleName();
  for (const QLabel* label : window.findChildren<QLabel*>())
    if (label->buddy() == control) name += label->text();
  return name;
}

}  // namespace

QStringList KeyboardFaults(QWidget& window) {
  QStringList faults;
  QWidgetList walk;
  const QPointer<QWidget> start = window.focusWidget();
  for (QWidget* at = start ? start.data() : &window; at != nullptr && !walk.contains(at); at = window.focusWidget()) {
    walk += at;
    QTest::keyClick(at, Qt::Key_Tab);
  }
  walk.removeOne(&window);  // gets the first Tab in a window without a focus
  if (start) start->setFocus();
  for (const QWidget* control : window.findChildren<QWidget*>()) {
    if (control->window() != &window || !CanBeUsed(*control)) continue;
    if (!walk.contains(control)) faults += QStringLiteral("Tab does not reach %1.").arg(NearestName(control));
    if (SpokenName(window, control).isEmpty())
      faults += QStringLiteral("%1 has no accessible name.").arg(NearestName(control));
  }
  return faults + OrderFaults(walk) + LetterFaults(window);
}

}  // namespace qbx::scenario
