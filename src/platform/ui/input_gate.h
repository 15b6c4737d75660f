// Which clicks, keys, close requests and timers count while logic is at work and lets events run.

#pragma once

#include <QObject>

class QTimer;
class QWidget;

namespace qbx {

/// An event filter of the application. While closed, input meant for any widget but the allowed ones is dropped; windows keep
/// repainting and timers keep running. The exceptions are timers that are held and the repeating of a button that is held down: what they
/// do may need the database, which is in the middle of a statement.
///
/// The accelerator of a button clicks it at once, so that no click comes out of a timer once the gate is closed.
///
/// A press that was dropped takes its release with it, also when the gate opened in between; a press that counted gets its release where
/// a control would otherwise stay pressed, without the click it would have made.
class InputGate : public QObject {
  Q_OBJECT
 public:
  InputGate();
  ~InputGate() override;

  /// Closes the gate for the life of the object; nests.
  class Closed {
   public:
    explicit Closed(InputGate& gate);
    ~Closed();
    Closed(const Closed&) = delete;
    Closed& operator=(const Closed&) = delete;

   private:
    InputGate& gate_;
  };

  /// Opens it again for the life of the object, for a box that is answered while logic is at work.
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
  /// Neither events are being let run for logic nor is a box open.
  [[nodiscard]] bool Idle() const { return closed_ == 0 && boxes_ == 0; }

  /// Lets a widget, and what it contains, be used while the gate is closed.
  static void Allow(QWidget& widget);
  /// Lets a timer wait until it is idle and no window waits for an answer. It then fires within its interval.
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
