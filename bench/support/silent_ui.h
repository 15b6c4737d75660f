// A user interface without a user: it has no pauses, and answers every question Yes.

#pragma once

#include "platform/user_interface.h"

namespace qbx::bench {

class SilentUi final : public UserInterface {
 public:
  void SetApplicationTitle(const QString& title) override { title_ = title; }
  [[nodiscard]] QString ApplicationTitle() const override { return title_; }
  MessageAnswer ShowMessage(const Message& message) override {
    if (message.buttons != MessageButtons::kOk) return MessageAnswer::kYes;
    last_ = message.text;
    return MessageAnswer::kOk;
  }
  [[nodiscard]] QString InputBox(const InputRequest&) override { return {}; }
  void ShowStatusBox(const StatusView&) override {}
  void CloseStatusBox() override {}
  [[nodiscard]] bool StatusCancelled() const override { return false; }
  void SetBusy(bool) override {}
  void PumpEvents() override {}
  void Pause(int) override {}
  void RequestQuit() override {}
  [[nodiscard]] bool QuitRequested() const override { return false; }

  /// The last message that is not a question.
  [[nodiscard]] const QString& LastMessage() const { return last_; }

 private:
  QString title_;
  QString last_;
};

}  // namespace qbx::bench
