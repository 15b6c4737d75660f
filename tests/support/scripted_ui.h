// The user, played by a test.

#pragma once

#include <QStringList>
#include <deque>
#include <functional>
#include <optional>
#include <vector>

#include "platform/user_interface.h"

namespace qbx::test {

/// Answers from a script and writes down everything that was shown.
///
///   ScriptedUi ui;
///   ui.Answer("Do you wish to process", MessageAnswer::kYes);   // the next box whose text holds this
///   ui.AnswerInput("Spring offer");                             // the next input box
///   ...
///   EXPECT_THAT(ui.MessageTexts(), ElementsAre("Campaign saved."));
///
/// A box with more than one button, and an input box, that nothing answers fail the test with their text (and get the
/// answer "No", "Cancel", empty). So do answers left over at the end, except to "Lose any changes ...?",
/// which comes only when something would be lost. A box with one button needs no answer.
class ScriptedUi final : public UserInterface {
 public:
  using MessageRule = std::function<std::optional<MessageAnswer>(const Message&)>;

  ScriptedUi() = default;
  ~ScriptedUi() override;

  /// Queues an answer for one box with several buttons whose text holds `part` (empty: any). The first that fits is
  /// used up.
  void Answer(const QString& part, MessageAnswer answer);
  /// Queues the text for the next input box whose prompt holds `part` (empty: any); an empty text is Cancel.
  void AnswerInput(const QString& text, const QString& part = {});
  /// Asked for every message box before the queue, boxes with one button included; what it leaves open goes to the
  /// queue. A place to look at the state behind the box as well.
  void OnMessage(MessageRule rule) { rule_ = std::move(rule); }
  /// Called by every PumpEvents, Pause and Wait: what the user does meanwhile.
  void OnPump(std::function<void()> action) { pump_ = std::move(action); }
  /// Called after every change of the status box.
  void OnStatus(std::function<void(const StatusView&)> action) { status_ = std::move(action); }
  /// Presses Cancel of the status box, which holds until the box shows another text.
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
  /// Sum of all waits in milliseconds; none is slept.
  [[nodiscard]] qint64 WaitedFor() const { return waitedFor_; }
  /// Forgets what was shown; queued answers stay.
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
