#include "platform/ui/input_gate.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QApplication>
#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QList>
#include <QMouseEvent>
#include <QShortcutEvent>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <utility>

namespace qbx {
namespace {

constexpr const char* kAllowed = "qbxAllowWhileWorking";
constexpr const char* kHeld = "qbxHoldWhileWorking";

bool IsAllowed(const QWidget& widget) {
  for (const QWidget* at = &widget; at != nullptr; at = at->parentWidget()) {
    if (at->property(kAllowed).toBool()) return true;
  }
  return false;
}

/// Whether a part of a window may be used. Which part is decided when the event reaches the widget.
bool HoldsAllowed(QWindow& window) {
  const QWidget* top = QWidget::find(window.winId());
  if (top == nullptr) return false;
  if (IsAllowed(*top)) return true;
  const QList<QWidget*> widgets = top->findChildren<QWidget*>();
  return std::any_of(widgets.begin(), widgets.end(),
                     [](const QWidget* widget) { return widget->property(kAllowed).toBool(); });
}

bool MayReceive(QObject* receiver) {
  if (receiver->isWindowType()) return HoldsAllowed(static_cast<QWindow&>(*receiver));
  for (const QObject* at = receiver; at != nullptr; at = at->parent()) {
    if (at->isWidgetType()) return IsAllowed(static_cast<const QWidget&>(*at));
  }
  return false;
}

bool IsMouseButton(const QEvent& event) {
  return event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick ||
         event.type() == QEvent::MouseButtonRelease;
}

bool IsInput(const QEvent& event) {
  switch (event.type()) {
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::Close:
    case QEvent::Quit:
      return true;
    default:
      return false;
  }
}

/// Releases a pressed button whose key release is dropped. Otherwise it would stay pressed, and click at the next
/// release of any key.
void LetGo(QObject* receiver) {
  if (auto* button = qobject_cast<QAbstractButton*>(receiver)) button->setDown(false);
}

/// Qt presses a button for a tenth of a second on its accelerator and then clicks it, whatever has begun meanwhile.
/// This clicks it at once.
/// \return whether the event was an accelerator
bool ClickAtOnce(QObject* receiver, QEvent* event) {
  if (event->type() != QEvent::Shortcut || static_cast<QShortcutEvent*>(event)->isAmbiguous()) return false;
  auto* button = qobject_cast<QAbstractButton*>(receiver);
  if (button == nullptr) return false;
  button->click();
  return true;
}

}  // namespace

InputGate::InputGate() {
  QCoreApplication::instance()->installEventFilter(this);
}

InputGate::~InputGate() = default;

InputGate::Closed::Closed(InputGate& gate) : gate_(gate) {
  ++gate_.closed_;
}

InputGate::Closed::~Closed() {
  --gate_.closed_;
  gate_.TellIdle();
}

InputGate::Opened::Opened(InputGate& gate) : gate_(gate), closedBefore_(std::exchange(gate.closed_, 0)) {
  ++gate_.boxes_;
}

InputGate::Opened::~Opened() {
  gate_.closed_ = closedBefore_;
  --gate_.boxes_;
  gate_.TellIdle();
}

void InputGate::Allow(QWidget& widget) {
  widget.setProperty(kAllowed, true);
}

void InputGate::Hold(QTimer& timer) {
  timer.setProperty(kHeld, true);
}

bool InputGate::HoldsTimer(QObject* receiver) const {
  const QWidget* const modal = QApplication::activeModalWidget();
  if (const auto* button = qobject_cast<QAbstractButton*>(receiver))  // a pressed button clicks repeatedly
    return (IsClosed() && !MayReceive(receiver)) || (modal != nullptr && button->window() != modal);
  return receiver->property(kHeld).toBool() && (!Idle() || modal != nullptr);
}

void InputGate::TellIdle() {
  if (Idle()) Q_EMIT BecameIdle();
}

bool InputGate::eventFilter(QObject* receiver, QEvent* event) {
  // Qt's timers, even single shots, fire again until their event is handled, so a held timer is not lost.
  if (event->type() == QEvent::Timer) return HoldsTimer(receiver);
  if (IsMouseButton(*event)) return DropMouse(receiver, event);
  if (!IsClosed() || !IsInput(*event) || MayReceive(receiver)) return ClickAtOnce(receiver, event);
  if (event->type() == QEvent::KeyRelease) LetGo(receiver);
  Dropped(event);
  return true;
}

bool InputGate::DropMouse(QObject* receiver, QEvent* event) {
  const Qt::MouseButton button = static_cast<QMouseEvent*>(event)->button();
  if (event->type() != QEvent::MouseButtonRelease) {
    if (!IsClosed() || MayReceive(receiver)) {
      droppedPresses_.setFlag(button, false);
      return false;
    }
    droppedPresses_.setFlag(button);
    return true;
  }
  if (droppedPresses_.testFlag(button)) {
    droppedPresses_.setFlag(button, false);
    return true;
  }
  // The press was delivered. A window and a scroll bar need the release to end their mouse grab; a button, a list or a
  // menu would take it for a command.
  if (!IsClosed() || receiver->isWindowType() || MayReceive(receiver)) return false;
  if (qobject_cast<QAbstractSlider*>(receiver) != nullptr) return false;
  LetGo(receiver);
  return true;
}

void InputGate::Dropped(QEvent* event) {
  if (event->type() == QEvent::Close || event->type() == QEvent::Quit) {
    event->ignore();
    Q_EMIT CloseRefused();
    return;
  }
  if (event->type() != QEvent::KeyPress) return;
  const auto* key = static_cast<QKeyEvent*>(event);
  if (key->key() == Qt::Key_Escape && !key->isAutoRepeat()) Q_EMIT EscapePressed();
}

}  // namespace qbx
