// Which clicks, keys, close requests and timers count while logic works and lets events run.

#pragma once

#include <QEvent>
#include <QObject>

class QTimer;
class QWidget;

namespace qbx {

/// An event filter of the application. While it is closed, input for any widget but the allowed ones is dropped.
/// Windows are still repainted and timers still run, except held timers and the repeating of a pressed button: their
/// work may need the database, which is busy with a statement.
///
/// The accelerator of a button clicks it at once, so that no timer clicks it after the gate has closed.
///
/// When a press was dropped, its release is dropped, too, even if the gate has opened meanwhile. When a press was
/// delivered before the gate closed, its release is delivered only where a control would otherwise stay pressed, and
/// without the click.
class InputGate : public QObject {
  Q_OBJECT
 public:
  InputGate();
  ~InputGate() override;

  /// The gate is closed as long as this lives; nests.
  class Closed {
   public:
    explicit Closed(InputGate& gate);
    ~Closed();
    Closed(const Closed&) = delete;
    Closed& operator=(const Closed&) = delete;

   private:
    InputGate& gate_;
  };

  /// The gate is open as long as this lives, for a box that is answered while logic works.
  class Opened {
   public:
    explicit Opened(InputGate& gate);
    ~Opened();
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

   private:
    InputGate& gate_;
    int closedBefore_;
  };

  [[nodiscard]] bool IsClosed() const { return closed_ > 0; }
  /// Whether the gate is open and no box waits for an answer.
  [[nodiscard]] bool Idle() const { return closed_ == 0 && boxes_ == 0; }

  /// Lets a widget and its children be used while the gate is closed.
  static void Allow(QWidget& widget);
  /// Makes a timer wait until the gate is idle and no modal window is open. It then fires within its interval.
  static void Hold(QTimer& timer);

 Q_SIGNALS:
  /// A window was asked to close, and does not.
  void CloseRefused();
  /// Esc was pressed in a window that may not be used.
  void EscapePressed();
  /// See `Idle`.
  void BecameIdle();

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  [[nodiscard]] bool DropMouse(QObject* receiver, QEvent* event);
  void Dropped(QEvent* event);
  void TellIdle();
  [[nodiscard]] bool HoldsTimer(QObject* receiver) const;

  int closed_ = 0;
  int boxes_ = 0;
  Qt::MouseButtons droppedPresses_ = Qt::NoButton;
};

}  // namespace qbx
