// The user, played by a test.

#pragma once

#include <QStringList>
#include <deque>
#include <functional>
#include <optional>
#include <vector>

#include "platform/user_interface.h"

namespace qbx::test {

/// Answers from a script, and keeps everything that was shown.
///
///   ScriptedUi ui;
///   ui.Answer("Do you wish to process", MessageAnswer::kYes);   // the next box whose text holds this
///   ui.AnswerInput("Spring offer");                             // the next input box
///   ...
///   EXPECT_THAT(ui.MessageTexts(), ElementsAre("Campaign saved."));
///
/// A box with several buttons, or an input box, without an answer in the script fails the test (and gets the answer
/// "No", "Cancel", empty). Answers that are left at the end fail the test, too, except for "Lose any changes ...?",
/// which only comes when something would be lost. A box with one button needs no answer.
class ScriptedUi final : public UserInterface {
 public:
  using MessageRule = std::function<std::optional<MessageAnswer>(const Message&)>;

  ScriptedUi() = default;
  ~ScriptedUi() override;

  /// Adds an answer for one box with several buttons whose text has `part` (empty: any box). The first answer that fits
  /// a box is used, once.
  void Answer(const QString& part, MessageAnswer answer);
  /// Adds a text for the next input box whose prompt has `part` (empty: any); an empty text means Cancel.
  void AnswerInput(const QString& text, const QString& part = {});
  /// Sets a function that is asked about every message box, before the added answers. When it gives none, they are
  /// used. It can also check the state of the program during the box.
  void OnMessage(MessageRule rule) { rule_ = std::move(rule); }
  /// Sets the user's actions during PumpEvents, Pause and Wait.
  void OnPump(std::function<void()> action) { pump_ = std::move(action); }
  /// Sets a function that is called after every change of the status box.
  void OnStatus(std::function<void(const StatusView&)> action) { status_ = std::move(action); }
  /// Presses Cancel of the status box. This lasts until the box shows another text.
  void PressCancel() { cancelled_ = true; }

  [[nodiscard]] const std::vector<Message>& Messages() const { return messages_; }
  [[nodiscard]] QStringList MessageTexts() const;
  [[nodiscard]] const std::vector<InputRequest>& Inputs() const { return inputs_; }
  /// Every status box shown, in order.
  [[nodiscard]] const std::vector<StatusView>& Statuses() const { return statuses_; }
  [[nodiscard]] QStringList StatusTexts() const;
  [[nodiscard]] bool StatusVisible() const { return statusVisible_; }
  [[nodiscard]] bool Busy() const { return busy_; }
  [[nodiscard]] int PumpCount() const { return pumps_; }
  /// Sum of all pauses in milliseconds.
  [[nodiscard]] qint64 PausedFor() const { return pausedFor_; }
  /// Sum of all waits in milliseconds. They take no time.
  [[nodiscard]] qint64 WaitedFor() const { return waitedFor_; }
  /// Forgets what was shown, but keeps the answers.
  void Clear();

  void SetApplicationTitle(const QString& title) override { title_ = title; }
  [[nodiscard]] QString ApplicationTitle() const override { return title_; }
  MessageAnswer ShowMessage(const Message& message) override;
  [[nodiscard]] QString InputBox(const InputRequest& request) override;
  void ShowStatusBox(const StatusView& view) override;
  void CloseStatusBox() override { statusVisible_ = false; }
  [[nodiscard]] bool StatusCancelled() const override { return cancelled_; }
  void SetBusy(bool busy) override { busy_ = busy; }
  void PumpEvents() override;
  void Pause(int milliseconds) override;
  void Wait(int milliseconds) override;
  void RequestQuit() override { quitRequested_ = true; }
  [[nodiscard]] bool QuitRequested() const override { return quitRequested_; }

 private:
  struct QueuedAnswer {
    QString part;
    MessageAnswer answer;
  };
  struct QueuedInput {
    QString part;
    QString text;
  };

  std::deque<QueuedAnswer> answers_;
  std::deque<QueuedInput> inputAnswers_;
  MessageRule rule_;
  std::function<void()> pump_;
  std::function<void(const StatusView&)> status_;
  std::vector<Message> messages_;
  std::vector<InputRequest> inputs_;
  std::vector<StatusView> statuses_;
  QString title_ = "QBX Marketing & Reporting Module";
  bool statusVisible_ = false;
  bool cancelled_ = false;
  bool busy_ = false;
  bool quitRequested_ = false;
  int pumps_ = 0;
  qint64 pausedFor_ = 0;
  qint64 waitedFor_ = 0;
};

}  // namespace qbx::test
