#include "support/scripted_ui.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace qbx::test {

namespace {

/// "Lose any changes ...?" comes only when something would be lost.
bool MayBeLeft(const QString& part) {
  if (part.isEmpty()) return false;
  return QString("Lose any changes and start a new campaign?").contains(part) ||
         QString("Lose any changes and load an existing campaign?").contains(part);
}

}  // namespace

ScriptedUi::~ScriptedUi() {
  for (const QueuedAnswer& left : answers_) {
    if (MayBeLeft(left.part)) continue;
    ADD_FAILURE() << "no question used the answer to: \"" << left.part.toStdString() << "\"";
  }
  for (const QueuedInput& left : inputAnswers_) {
    ADD_FAILURE() << "no input box used the text: \"" << left.text.toStdString() << "\"";
  }
}

void ScriptedUi::Answer(const QString& part, MessageAnswer answer) {
  answers_.push_back({part, answer});
}

void ScriptedUi::AnswerInput(const QString& text, const QString& part) {
  inputAnswers_.push_back({part, text});
}

QStringList ScriptedUi::MessageTexts() const {
  QStringList texts;
  for (const Message& message : messages_)
    texts.append(message.text);
  return texts;
}

QStringList ScriptedUi::StatusTexts() const {
  QStringList texts;
  for (const StatusView& view : statuses_)
    texts.append(view.message);
  return texts;
}

void ScriptedUi::Clear() {
  messages_.clear();
  inputs_.clear();
  statuses_.clear();
  pumps_ = 0;
  pausedFor_ = 0;
  waitedFor_ = 0;
}

MessageAnswer ScriptedUi::ShowMessage(const Message& message) {
  if (quitRequested_) return SafeAnswer(message.buttons);
  messages_.push_back(message);
  if (rule_) {
    if (const std::optional<MessageAnswer> answer = rule_(message)) return *answer;
  }
  if (message.buttons == MessageButtons::kOk) return MessageAnswer::kOk;
  const auto fits = [&message](const QueuedAnswer& queued) { return message.text.contains(queued.part); };
  const auto found = std::find_if(answers_.begin(), answers_.end(), fits);
  if (found == answers_.end()) {
    ADD_FAILURE() << "a question without an answer: \"" << message.text.toStdString() << "\"";
    return SafeAnswer(message.buttons);
  }
  const MessageAnswer answer = found->answer;
  answers_.erase(found);
  return answer;
}

QString ScriptedUi::InputBox(const InputRequest& request) {
  inputs_.push_back(request);
  const auto fits = [&request](const QueuedInput& queued) { return request.prompt.contains(queued.part); };
  const auto found = std::find_if(inputAnswers_.begin(), inputAnswers_.end(), fits);
  if (found == inputAnswers_.end()) {
    ADD_FAILURE() << "an input box without a text: \"" << request.prompt.toStdString() << "\"";
    return {};
  }
  QString text = found->text;
  inputAnswers_.erase(found);
  return text;
}

void ScriptedUi::ShowStatusBox(const StatusView& view) {
  statuses_.push_back(view);
  statusVisible_ = true;
  cancelled_ = false;
  if (status_) status_(view);
}

void ScriptedUi::PumpEvents() {
  ++pumps_;
  if (pump_) pump_();
}

void ScriptedUi::Pause(int milliseconds) {
  pausedFor_ += milliseconds;
  if (pump_) pump_();
}

void ScriptedUi::Wait(int milliseconds) {
  waitedFor_ += milliseconds;
  if (pump_) pump_();
}

}  // namespace qbx::test
