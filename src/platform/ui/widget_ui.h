// The user interface of windows.

#pragma once

#include <QPointer>
#include <QString>
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
/// While logic lets events run (PumpEvents, Pause, Wait) windows are repainted, but clicks, keys and close requests for
/// any window but the status box are dropped, not queued. A close request brings the status box to the front instead. A
/// widget for which `AllowWhileWorking` was called stays usable with its children. Boxes that are opened meanwhile work
/// normally. Esc is Cancel of the status box in every window.
///
/// The pointer is a switch, not a count: one SetBusy(false) restores it, however often it was switched on. There is one
/// object of this class at a time.
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

  /// Sets the owner of boxes when no other window is active. RequestQuit closes it when events run again.
  void SetMainWindow(QWidget* window);

  /// Stores where the input box was: called with the box and its name before it is shown and when it closes.
  struct WindowMemory {
    std::function<void(QWidget& window, const QString& form)> restore = {};
    std::function<void(const QWidget& window, const QString& form)> keep = {};
  };
  void SetWindowMemory(WindowMemory memory);

  /// Lets a widget be used while logic lets events run, such as the button that pauses a run.
  static void AllowWhileWorking(QWidget& widget);
  /// Makes a timer wait while logic works or a modal window is open; it fires afterwards. Every timer must be held
  /// whose work uses the database, or changes what a command works on.
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
