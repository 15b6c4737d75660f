// What the five pages of the wizard share.

#pragma once

#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QWidget>
#include <functional>

#include "desk/campaign_desk.h"

namespace qbx {

/// What a page works with, and what it asks of the main window.
struct PageParts {
  Application& app;
  CampaignDesk& desk;
  ReportPrinter& reports;
  std::function<void(int index)> next;           ///< "Next >" of tab index + 1
  std::function<void(int index)> back;           ///< "< Back" of tab index + 1
  std::function<void(qint64 recordId)> showRow;  ///< opens step 3 and makes a row current
  /// Runs a command while all others are disabled. It must not show state: showing enables and disables controls and
  /// comes afterwards.
  std::function<void(const std::function<void()>& command)> guarded;
  /// Runs a command that needs the database; refuses it with a message when there never was a connection.
  std::function<void(const std::function<void()>& command)> run;
};

/// A page copies values between its controls and the wizard's state, calls logic and shows the result. It is made when
/// its tab is first opened.
class WizardPage : public QWidget {
 public:
  explicit WizardPage(PageParts parts) : parts_(std::move(parts)) {}

  /// Copies the state to the controls.
  void ShowState() {
    const QScopedValueRollback<bool> showing(showing_, true);
    CopyState();
  }
  /// Another campaign was set up: drops what only the controls hold. `ShowState` follows.
  virtual void CampaignSetUp() {}
  /// A command is about to run: copies edits that the state lacks into it.
  virtual void KeepEdits() {}
  /// The window is about to close: stores what is kept for the user.
  virtual void WindowCloses() {}
  /// The control that gets the focus when the tab is opened.
  [[nodiscard]] virtual QWidget* FirstControl() = 0;

 protected:
  /// Return and Enter press the focused button, otherwise the page's default button.
  void keyPressEvent(QKeyEvent* event) override;
  virtual void CopyState() = 0;
  /// Whether the controls are being filled, so that their signals do not come from the user.
  [[nodiscard]] bool Showing() const { return showing_; }
  [[nodiscard]] WizardState& State() { return parts_.desk.state; }
  [[nodiscard]] Application& App() { return parts_.app; }
  [[nodiscard]] CampaignDesk& Desk() { return parts_.desk; }
  [[nodiscard]] ReportPrinter& Reports() { return parts_.reports; }
  void Next(int index) { parts_.next(index); }
  void Back(int index) { parts_.back(index); }
  void ShowRow(qint64 recordId) { parts_.showRow(recordId); }
  void Guarded(const std::function<void()>& command) { parts_.guarded(command); }
  void Run(const std::function<void()>& command) { parts_.run(command); }

 private:
  PageParts parts_;
  bool showing_ = false;
};

}  // namespace qbx
