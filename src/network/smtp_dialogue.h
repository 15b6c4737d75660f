// What mail client and mail server said to each other about one message.

#pragma once

#include <QByteArray>
#include <QString>

namespace qbx {

/// Follows the commands and answers of one transfer. It tells at which step a failure came and what the server said.
class SmtpDialogue {
 public:
  enum class Step { kConnect, kLogin, kSender, kRecipient, kData, kMessage };

  /// \param lines  one or more command lines; an unknown command belongs to the log-in
  void ClientSaid(const QByteArray& lines);
  /// \param lines  one or more lines of an answer
  void ServerSaid(const QByteArray& lines);

  /// The last step begun. `kMessage` begins when the server invites the message (354).
  [[nodiscard]] Step LastStep() const { return step_; }
  /// The code of the last step's answer when it is complete, otherwise 0.
  [[nodiscard]] int Code() const { return complete_ ? code_ : 0; }
  [[nodiscard]] int QuitsSaid() const { return quitsSaid_; }
  /// The code of the answer to the first QUIT, 0 when there was none. QUIT and its answer change nothing else here,
  /// because libcurl sends QUIT by itself after a failure.
  [[nodiscard]] int QuitCode() const { return quitCode_; }
  /// The last line of the last answer to any step, even an incomplete one.
  [[nodiscard]] QString LastAnswer() const { return QString::fromUtf8(lastLine_); }
  /// Whether the server refused the sender, the recipient or the message, and not the session.
  [[nodiscard]] bool MessageRefused() const;
  /// Whether the server refused because there was no log-in, or not a good enough one.
  [[nodiscard]] bool LogInDemanded() const;
  /// The address in the last MAIL or RCPT command.
  [[nodiscard]] QString LastAddress() const { return QString::fromUtf8(address_); }

 private:
  void Begin(Step step);

  Step step_ = Step::kConnect;
  bool complete_ = false;
  int code_ = 0;
  int quitsSaid_ = 0;
  int quitCode_ = 0;
  QByteArray lastLine_;
  QByteArray address_;
};

}  // namespace qbx
