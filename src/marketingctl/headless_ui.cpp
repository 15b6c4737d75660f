#include "marketingctl/headless_ui.h"

#include <unistd.h>

#include <csignal>
#include <cstdio>

namespace qbx::ctl {

namespace {

volatile std::sig_atomic_t interrupted = 0;  // a signal handler can reach nothing else

void OnSignal(int signal) {
  if (interrupted != 0) {
    std::signal(signal, SIG_DFL);
    std::raise(signal);
  }
  interrupted = 1;
}

MessageAnswer SafeAnswer(const Message& message) {
  if (message.question == Question::kQuitAfterLostConnection) return MessageAnswer::kYes;
  return message.buttons == MessageButtons::kYesNoCancel ? MessageAnswer::kCancel : MessageAnswer::kNo;
}

const char* AnswerText(MessageAnswer answer) {
  switch (answer) {
    case MessageAnswer::kYes:
      return "Yes";
    case MessageAnswer::kNo:
      return "No";
    case MessageAnswer::kCancel:
      return "Cancel";
    case MessageAnswer::kOk:
      break;
  }
  return "OK";
}

QByteArray TerminalText(QString text) {
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  return text.trimmed().toUtf8();
}

}  // namespace

HeadlessUi::HeadlessUi() : terminal_(isatty(STDERR_FILENO) != 0) {
  std::signal(SIGINT, OnSignal);
  std::signal(SIGTERM, OnSignal);
}

bool HeadlessUi::Interrupted() {
  return interrupted != 0;
}

MessageAnswer HeadlessUi::ShowMessage(const Message& message) {
  ClearLine();
  const QByteArray text = TerminalText(message.text);
  if (message.buttons == MessageButtons::kOk) {
    warned_ = warned_ || message.icon == MessageIcon::kExclamation || message.icon == MessageIcon::kStop;
    std::fprintf(stderr, "%s\n", text.constData());
    return MessageAnswer::kOk;
  }
  const MessageAnswer answer = answers_.value(static_cast<int>(message.question), SafeAnswer(message));
  std::fprintf(stderr, "%s\n[answered: %s]\n", text.constData(), AnswerText(answer));
  return answer;
}

QString HeadlessUi::InputBox(const InputRequest&) {
  return {};
}

void HeadlessUi::ShowStatusBox(const StatusView& view) {
  if (!terminal_) return;
  ClearLine();
  std::fprintf(stderr, "%s", TerminalText(view.message).constData());
  lineOpen_ = true;
}

void HeadlessUi::CloseStatusBox() {
  ClearLine();
}

void HeadlessUi::ShowProgress(int done, int total) {
  if (!terminal_ || total < 1) return;
  ClearLine();
  std::fprintf(stderr, "%d of %d messages (%d%%)", done, total, static_cast<int>(100LL * done / total));
  lineOpen_ = true;
}

void HeadlessUi::EndProgress() {
  ClearLine();
}

void HeadlessUi::ClearLine() {
  if (!lineOpen_) return;
  std::fprintf(stderr, "\r\033[K");
  lineOpen_ = false;
}

}  // namespace qbx::ctl
