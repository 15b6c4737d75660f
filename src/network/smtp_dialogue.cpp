#include "network/smtp_dialogue.h"

#include <QList>
#include <algorithm>

namespace qbx {
namespace {

QList<QByteArray> Lines(const QByteArray& text) {
  QList<QByteArray> lines;
  for (const QByteArray& line : text.split('\n')) {
    if (!line.trimmed().isEmpty()) lines.append(line.trimmed());
  }
  return lines;
}

/// A log-in is also a line of letters and digits, and may begin like a command.
QByteArray FirstWord(const QByteArray& line) {
  const auto end = std::find_if(line.begin(), line.end(), [](char c) { return c == ' ' || c == ':'; });
  return line.left(end - line.begin()).toUpper();
}

QByteArray AddressIn(const QByteArray& command) {
  const qsizetype open = command.indexOf('<');
  return command.mid(open + 1, command.indexOf('>') - open - 1);
}

}  // namespace

void SmtpDialogue::Begin(Step step) {
  step_ = step;
  complete_ = false;
  code_ = 0;
}

void SmtpDialogue::ClientSaid(const QByteArray& lines) {
  for (const QByteArray& line : Lines(lines)) {
    const QByteArray word = FirstWord(line);
    if (word == "QUIT") {
      ++quitsSaid_;
    } else if (word == "EHLO" || word == "HELO" || word == "STARTTLS") {
      Begin(Step::kConnect);
    } else if (word == "MAIL" || word == "RCPT") {
      Begin(word == "MAIL" ? Step::kSender : Step::kRecipient);
      address_ = AddressIn(line);
    } else {
      Begin(word == "DATA" ? Step::kData : Step::kLogin);
    }
  }
}

void SmtpDialogue::ServerSaid(const QByteArray& lines) {
  for (const QByteArray& line : Lines(lines)) {
    if (quitsSaid_ > 0) {
      if (quitsSaid_ == 1) quitCode_ = line.left(3).toInt();
      continue;
    }
    lastLine_ = line;
    code_ = line.left(3).toInt();
    complete_ = code_ >= 100 && (line.size() == 3 || line[3] == ' ');
    if (complete_ && step_ == Step::kData && code_ == 354) Begin(Step::kMessage);
  }
}

bool SmtpDialogue::MessageRefused() const {
  const bool closingDown = Code() == 421;
  return step_ >= Step::kSender && Code() >= 400 && !closingDown && !LogInDemanded();
}

bool SmtpDialogue::LogInDemanded() const {
  const int code = Code();
  return code == 530 || code == 534 || code == 535 || code == 538;
}

}  // namespace qbx
