#include "mouse_and_keys.h"

#include <QtTest>
#include <QtWidgets>

#include "find_control.h"
#include "scenario_error.h"

namespace qbx::scenario {
namespace {

void Activate(QWidget& window) {
  if (QApplication::activeWindow() == &window || window.windowType() == Qt::Tool) return;
  window.activateWindow();
  // Shortcuts need an active window, which a window system may only make later.
  for (int i = 0; i < 20 && QApplication::activeWindow() != &window; ++i)
    QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

bool AnyButtonDown() {
  for (const QWidget* widget : QApplication::allWidgets()) {
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    if (button != nullptr && button->isDown()) return true;
  }
  return false;
}

}  // namespace

void Settle() {
  QCoreApplication::sendPostedEvents();
  QCoreApplication::processEvents();
}

void MakeUsable(QWidget& widget, const QString& what) {
  const QWidget* modal = QApplication::activeModalWidget();
  // The status box can be used with any window, even a modal one.
  if (modal != nullptr && widget.window() != modal && WindowName(*widget.window()) != QLatin1String("frmProcessing"))
    throw ScenarioError(QStringLiteral("%1 cannot be used while %2 is open.").arg(what, WindowName(*modal)));
  if (!widget.isVisible()) throw ScenarioError(QStringLiteral("%1 is not visible.").arg(what));
  if (!widget.isEnabled()) throw ScenarioError(QStringLiteral("%1 is disabled.").arg(what));
  for (QWidget* parent = widget.parentWidget(); parent != nullptr; parent = parent->parentWidget()) {
    if (auto* area = qobject_cast<QScrollArea*>(parent)) area->ensureWidgetVisible(&widget);
  }
}

void ClickAt(QWidget& widget, QPoint point, const QString& what, const Click& click) {
  MakeUsable(widget, what);
  QWidget* window = widget.window();
  Activate(*window);
  if (&widget != window) {
    const QWidget* hit = window->childAt(widget.mapTo(window, point));
    if (hit == nullptr) throw ScenarioError(QStringLiteral("%1 lies outside its window.").arg(what));
    if (hit != &widget && !widget.isAncestorOf(hit) && !hit->isAncestorOf(&widget))
      throw ScenarioError(QStringLiteral("%1 is covered by %2.").arg(what, WindowName(*hit)));
    if (hit != &widget && hit->isAncestorOf(&widget))
      throw ScenarioError(QStringLiteral("%1 is cut off by %2.").arg(what, WindowName(*hit)));
  }
  const QPointer<QWidget> alive(&widget);
  if (click.twice) {
    QTest::mouseClick(&widget, click.button, click.modifiers, point);
    if (alive != nullptr) QTest::mouseDClick(&widget, click.button, click.modifiers, point);
    if (alive != nullptr) QTest::mouseRelease(&widget, click.button, click.modifiers, point);
  } else {
    QTest::mouseClick(&widget, click.button, click.modifiers, point);
    if (click.button == Qt::RightButton && alive != nullptr) {
      // The platform would derive this event from the press.
      QContextMenuEvent menu(QContextMenuEvent::Mouse, point, widget.mapToGlobal(point), click.modifiers);
      QCoreApplication::sendEvent(&widget, &menu);
    }
  }
  Settle();
}

void TypeText(QWidget& widget, const QString& text) {
  Activate(*widget.window());
  const QPointer<QWidget> alive(&widget);
  for (const char32_t character : text.toStdU32String()) {
    if (alive == nullptr) return;
    if (character == U'\n') {
      QTest::keyClick(&widget, Qt::Key_Return);
    } else if (character == U'\t') {
      QTest::keyClick(&widget, Qt::Key_Tab);
    } else {
      const bool ascii = character < 0x80;  // the library only knows keys for ASCII
      const Qt::Key key = ascii ? QTest::asciiToKey(static_cast<char>(character)) : Qt::Key_unknown;
      QTest::sendKeyEvent(QTest::Click, &widget, key, QString::fromUcs4(&character, 1), Qt::NoModifier);
    }
  }
  Settle();
}

void PressKeys(QWidget& widget, const QString& keys) {
  const QKeySequence sequence = QKeySequence::fromString(keys, QKeySequence::PortableText);
  if (sequence.count() != 1 || sequence[0].key() == Qt::Key_unknown)
    throw ScenarioError(QStringLiteral("There is no key \"%1\".").arg(keys));
  Activate(*widget.window());
  QTest::keyClick(&widget, sequence[0].key(), sequence[0].keyboardModifiers());
  Settle();
  // An accelerator shows its button pressed for a moment, and then clicks it.
  (void)QTest::qWaitFor([] { return !AnyButtonDown(); }, 1000);
  Settle();
}

Qt::KeyboardModifiers ReadModifiers(const QString& text) {
  static const QHash<QString, Qt::KeyboardModifier> kKeys = {
      {"ctrl", Qt::ControlModifier}, {"shift", Qt::ShiftModifier}, {"alt", Qt::AltModifier}};
  Qt::KeyboardModifiers modifiers;
  for (const QString& name : text.split(QLatin1Char('+'), Qt::SkipEmptyParts)) {
    if (!kKeys.contains(name.toLower()))
      throw ScenarioError(QStringLiteral("There is no key \"%1\" to hold.").arg(name));
    modifiers |= kKeys[name.toLower()];
  }
  return modifiers;
}

}  // namespace qbx::scenario
