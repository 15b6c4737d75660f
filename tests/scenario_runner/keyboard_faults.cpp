#include "keyboard_faults.h"

#include <QtTest>
#include <QtWidgets>

#include "find_control.h"

namespace qbx::scenario {
namespace {

template <class... Kinds>
bool IsOneOf(const QObject* object) {
  return (... || (qobject_cast<const Kinds*>(object) != nullptr));
}

// A part of a control of Qt's, such as the button that clears a box.
bool IsPart(const QWidget& widget) {
  for (const QWidget* at = widget.parentWidget(); at != nullptr && !at->isWindow(); at = at->parentWidget()) {
    if (IsOneOf<QComboBox, QLineEdit, QAbstractSpinBox, QTabBar, QAbstractItemView, QTextEdit, QPlainTextEdit>(at))
      return true;
  }
  return widget.objectName().startsWith(QLatin1String("qt_"));
}

bool CanBeUsed(const QWidget& widget) {
  return IsOneOf<QAbstractButton, QComboBox, QLineEdit, QAbstractSpinBox, QTabBar, QAbstractItemView, QTextEdit,
                 QPlainTextEdit>(&widget) ||
         ((widget.focusPolicy() & Qt::TabFocus) != 0 && widget.focusProxy() == nullptr);
}

QWidgetList Controls(const QWidget& window) {
  QWidgetList controls;
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    if (widget->window() == &window && widget->isVisible() && widget->isEnabled() && CanBeUsed(*widget) &&
        !IsPart(*widget))
      controls += widget;
  }
  return controls;
}

bool InReadingOrder(const QWidget& first, const QWidget& second) {
  if (first.isAncestorOf(&second) || second.isAncestorOf(&first)) return first.isAncestorOf(&second);
  const QWidget* a = &first;
  const QWidget* b = &second;
  while (!a->parentWidget()->isAncestorOf(b))
    a = a->parentWidget();
  while (b->parentWidget() != a->parentWidget())
    b = b->parentWidget();
  const QRect left = a->geometry();
  const QRect right = b->geometry();
  const auto crosses = [](const QRect& row, int y) { return row.top() <= y && y <= row.bottom(); };
  const bool sameRow = crosses(left, right.center().y()) || crosses(right, left.center().y());
  return sameRow ? left.left() <= right.left() : left.top() < right.top();
}

QWidgetList WalkWithTab(QWidget& start) {
  QWidgetList walk;
  for (QWidget* at = &start; at != nullptr && !walk.contains(at); at = start.window()->focusWidget()) {
    walk += at;
    QTest::keyClick(at, Qt::Key_Tab);
  }
  return walk;
}

QStringList OrderFaults(const QWidgetList& walk) {
  QStringList faults;
  for (qsizetype i = 0; i < walk.size(); ++i) {
    const QWidget& from = *walk[i];
    const QWidget& to = *walk[(i + 1) % walk.size()];
    if (&from != &to && !InReadingOrder(from, to))
      faults += QStringLiteral("Tab goes back from %1 to %2.").arg(NearestName(&from), NearestName(&to));
  }
  // Once round it goes back to the beginning.
  return faults.size() > 1 ? faults : QStringList();
}

QString SpokenName(const QWidget& control, const QList<QLabel*>& labels) {
  QString name = control.accessibleName();
  if (name.isEmpty() && IsOneOf<QTabBar>(&control)) name = control.parentWidget()->accessibleName();
  if (name.isEmpty() && IsOneOf<QAbstractButton, QLabel>(&control)) name = control.property("text").toString();
  for (const QLabel* label : labels) {
    if (name.isEmpty() && label->buddy() == &control) name = label->text();
  }
  return name;
}

/// The captions of a widget that may have a letter for Alt.
QStringList Captions(const QWidget& widget) {
  QStringList captions;
  if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
    for (int i = 0; i < tabs->count(); ++i)
      captions += tabs->tabText(i);
  } else if (const auto* menus = qobject_cast<const QMenuBar*>(&widget)) {
    for (const QAction* menu : menus->actions())
      captions += menu->text();
  } else if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
    if (label->buddy() != nullptr && label->buddy()->isVisible()) captions += label->text();
  } else {
    captions += widget.property(IsOneOf<QGroupBox>(&widget) ? "title" : "text").toString();
  }
  return captions;
}

bool NeedsLetter(const QWidget& widget, const QString& caption) {
  const QString plain = PlainCaption(caption);
  const bool known = plain == QLatin1String("OK") || plain == QLatin1String("Cancel");  // Return and Esc
  const bool hasLetters = std::any_of(plain.begin(), plain.end(), [](QChar unit) { return unit.isLetter(); });
  return IsOneOf<QPushButton, QCheckBox, QLabel>(&widget) && hasLetters && !known;
}

QStringList LetterFaults(const QWidget& window) {
  QStringList faults;
  QHash<QString, QString> owners;
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    if (widget->window() != &window || !widget->isVisible()) continue;
    if (!IsOneOf<QAbstractButton, QLabel, QGroupBox, QTabBar, QMenuBar>(widget)) continue;
    for (const QString& caption : Captions(*widget)) {
      const QString keys = QKeySequence::mnemonic(caption).toString(QKeySequence::PortableText);
      if (keys.isEmpty() && NeedsLetter(*widget, caption))
        faults += QStringLiteral("%1 has no letter.").arg(NearestName(widget));
      if (!keys.isEmpty() && owners.contains(keys))
        faults += QStringLiteral("%1 is %2 and %3.").arg(keys, owners[keys], NearestName(widget));
      if (!keys.isEmpty()) owners[keys] = NearestName(widget);
    }
  }
  return faults;
}

}  // namespace

QStringList KeyboardFaults(QWidget& window) {
  QStringList faults;
  const QPointer<QWidget> start = window.focusWidget();
  QWidgetList walk = WalkWithTab(start == nullptr ? window : *start);
  walk.removeOne(&window);  // the first Tab of a window without a focus
  const QList<QLabel*> labels = window.findChildren<QLabel*>();
  for (const QWidget* control : Controls(window)) {
    if (!walk.contains(control)) faults += QStringLiteral("Tab does not reach %1.").arg(NearestName(control));
    if (SpokenName(*control, labels).trimmed().isEmpty())
      faults += QStringLiteral("%1 has no accessible name.").arg(NearestName(control));
  }
  if (start != nullptr) start->setFocus();
  return faults + OrderFaults(walk) + LetterFaults(window);
}

}  // namespace qbx::scenario
