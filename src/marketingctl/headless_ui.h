// The user interface of a run without a person.

#pragma once

#include <QHash>

#include "platform/user_interface.h"

namespace qbx::ctl {

/// Prints messages to stderr and gives questions the answers of the command line. Pauses that let a person read are
/// skipped.
///
/// Ctrl+C (SIGINT) and SIGTERM cancel whatever shows a Cancel button, and set `Interrupted`. A second one ends the
/// process.
class HeadlessUi final : public UserInterface {
 public:
  HeadlessUi();

  /// Sets the answer to a question. Without it the question gets its safe answer (see docs/headless.md).
  void SetAnswer(Question question, MessageAnswer answer) { answers_.insert(static_cast<int>(question), answer); }
  [[nodiscard]] static bool Interrupted();
  /// Whether a refusal or a warning was shown.
  [[nodiscard]] bool Warned() const { return warned_; }
  /// Whether a question got another answer than Yes because no flag answers it. What it asked about was not done.
  [[nodiscard]] bool Declined() const { return declined_; }

  /// Whether the server has no database of the configured name. Unless a flag answers the question, it is not asked:
  /// nothing can be brought online.
  [[nodiscard]] bool DatabaseMissing() const { return databaseMissing_; }

  void SetApplicationTitle(const QString& title) override { title_ = title; }
  [[nodiscard]] QString ApplicationTitle() const override { return title_; }
  MessageAnswer ShowMessage(const Message& message) override;
  /// Always cancelled.
  [[nodiscard]] QString InputBox(const InputRequest& request) override;
  void ShowStatusBox(const StatusView& view) override;
  void CloseStatusBox() override;
  [[nodiscard]] bool StatusCancelled() const override { return Interrupted(); }
  void SetBusy(bool) override {}
  void PumpEvents() override {}
  void Pause(int) override {}
  void Wait(int milliseconds) override;
  void RequestQuit() override { quitRequested_ = true; }
  [[nodiscard]] bool QuitRequested() const override { return quitRequested_; }

  /// Shows the progress of a run, on a terminal only.
  void ShowProgress(int done, int total);
  void EndProgress();

 private:
  void ClearLine();
  [[nodiscard]] MessageAnswer Answer(const Message& message);

  QString title_;
  QHash<int, MessageAnswer> answers_;
  bool terminal_ = false;
  bool lineOpen_ = false;
  bool warned_ = false;
  bool declined_ = false;
  bool withoutDatabase_ = false;
  bool databaseMissing_ = false;
  bool quitRequested_ = false;
};

}  // namespace qbx::ctl
