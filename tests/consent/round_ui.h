// The person at a desk of a round.

#pragma once

#include <QFile>
#include <functional>

#include "consent/story.h"
#include "platform/user_interface.h"

namespace qbx::consent {

/// The answers to the questions of a run.
struct Answers {
  MessageAnswer credits = MessageAnswer::kYes;
  bool repeatDelivered = false;
  bool goOnSending = false;
  bool cancelQueued = false;
  bool lettersAgain = false;
  bool lettersPrinted = false;  ///< the printer has the letters that were last handed to it
  bool markLetters = false;     ///< marks letters that were neither printed nor saved
};

/// Gives these answers, and writes what was shown into the story.
class RoundUi final : public UserInterface {
 public:
  explicit RoundUi(Story& story) : story_(story) {}

  Answers answers;
  /// Called with the customers that question 1 names, and the answer.
  std::function<void(int customers, bool yes)> onRepeatQuestion;
  bool channelPaused = false;  ///< "Go on sending?" was answered No since this was cleared
  QString lastMessage;

  void SetApplicationTitle(const QString&) override {}
  [[nodiscard]] QString ApplicationTitle() const override { return QStringLiteral("Marketing"); }
  MessageAnswer ShowMessage(const Message& message) override {
    lastMessage = message.text;
    const MessageAnswer answer = AnswerTo(message);
    QString line = message.text.simplified();
    if (message.buttons != MessageButtons::kOk) line += QStringLiteral(" -> %1").arg(static_cast<int>(answer));
    story_.Tell(QStringLiteral("    box: ") + line);
    return answer;
  }
  [[nodiscard]] QString InputBox(const InputRequest&) override { return {}; }
  void ShowStatusBox(const StatusView&) override {}
  void CloseStatusBox() override {}
  [[nodiscard]] bool StatusCancelled() const override { return false; }
  void SetBusy(bool) override {}
  void PumpEvents() override {}
  void Pause(int) override {}
  void RequestQuit() override { story_.Fault(QStringLiteral("the program wants to quit")); }
  [[nodiscard]] bool QuitRequested() const override { return false; }

 private:
  [[nodiscard]] MessageAnswer AnswerTo(const Message& message) {
    const auto yesNo = [](bool yes) { return yes ? MessageAnswer::kYes : MessageAnswer::kNo; };
    if (message.buttons == MessageButtons::kOk) return MessageAnswer::kOk;
    if (message.question == Question::kSmsCredits) return answers.credits;
    if (message.question == Question::kCancelQueuedEmails) return yesNo(answers.cancelQueued);
    if (message.text.contains(QStringLiteral("what it already got?")) ||
        message.text.contains(QStringLiteral("what they already got?"))) {
      onRepeatQuestion(message.text.section(QLatin1Char(' '), 0, 0).toInt(), answers.repeatDelivered);
      return yesNo(answers.repeatDelivered);
    }
    if (message.question == Question::kLettersAgain) return yesNo(answers.lettersAgain);
    if (message.question == Question::kLettersInDoubt) return yesNo(LettersWentOut(message.text));
    if (message.text.contains(QStringLiteral("neither printed nor saved"))) return yesNo(answers.markLetters);
    if (message.buttons == MessageButtons::kAbortRetryIgnore) return MessageAnswer::kAbort;
    if (message.text.contains(QStringLiteral("Go on sending?"))) {
      channelPaused = channelPaused || !answers.goOnSending;
      return yesNo(answers.goOnSending);
    }
    return MessageAnswer::kYes;
  }

  /// The person looks at the printer or for the file that the question names.
  [[nodiscard]] bool LettersWentOut(const QString& question) const {
    if (question.contains(QStringLiteral(" to be handed to the printer "))) return answers.lettersPrinted;
    return QFile::exists(question.section(QStringLiteral(" to appear in "), 1).section(QStringLiteral(" at "), 0, 0));
  }

  Story& story_;
};

}  // namespace qbx::consent
