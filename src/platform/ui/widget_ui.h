// The user, reached through windows.

#pragma once

#include <QPointer>
#include <functional>
#include <memory>

#include "platform/user_interface.h"

class QTimer;
class QWidget;

namespace qbx {

class InputGate;
class frmProcessing;

/// Message boxes, `frmInputBox`, the status box `frmProcessing`, the hourglass, and letting events run.
///
/// While logic lets events run (PumpEvents, Pause, Wait) windows repaint, but clicks, keys and requests to close that are meant for any
/// window but the status box are dropped, not queued; a request to close brings the status box to the front instead. A widget on which
/// `AllowWhileWorking` was called, and what it contains, stays usable. Boxes that are opened meanwhile work as ever. Esc is Cancel of the
/// status box, wherever the keyboard is.
///
/// The pointer is one switch, not a count: SetBusy(false) restores it however often it was switched on. One of these at a time.
class WidgetUi : public UserInterface {
 public:
  WidgetUi();
  ~WidgetUi() override;

  void SetApplicationTitle(const QString& title) override;
  [[nodiscard]] QString ApplicationTitle() const override { return title_; }
  MessageAnswer ShowMessage(const Message& message) override;
  [[nodiscard]] QString InputBox(const InputRequest& request) override;
  void ShowStatusBox(const StatusView& view) override;
  void CloseStatusBox() override;
  [[nodiscard]] bool StatusCancelled() const override;
  void SetBusy(bool busy) override;
  void PumpEvents() override;
  void Pause(int milliseconds) override;
  void RequestQuit() override;
  [[nodiscard]] bool QuitRequested() const override { return quitRequested_; }

  /// The window that boxes belong to while no other window is active. RequestQuit closes it once events run again.
  void SetMainWindow(QWidget* window);

  /// How the input box is placed: called with the box and its name before it is shown, and when it closes.
  struct WindowMemory {
    std::function<void(QWidget& window, const QString& form)> restore = {};
    std::function<void(const QWidget& window, const QString& form)> keep = {};
  };
  void SetWindowMemory(WindowMemory memory);

  /// Lets a widget be used while logic lets events run, such as a button that pauses a run.
  static void AllowWhileWorking(QWidget& widget);
  /// Lets a timer wait while logic is at work or a window waits for an answer, and fire afterwards. Whatever a timer starts that uses the
  /// database, or changes what a command works on, has to be held.
  static void HoldWhileWorking(QTimer& timer);

 private:
  class BoxOpen;

  [[nodiscard]] QWidget* Owner() const;
  void CloseWhenIdle();

  QString title_;
  bool quitRequested_ = false;
  bool closePending_ = false;
  bool busy_ = false;
  QPointer<QWidget> mainWindow_;
  WindowMemory memory_;
  std::unique_ptr<InputGate> gate_;
  std::unique_ptr<frmProcessing> processing_;
};

}  // namespace qbx
