#include "marketingctl/headless_ui.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <thread>

#include "marketingctl/refusals.h"

namespace qbx::ctl {

namespace {

volatile std::sig_atomic_t interrupted = 0;  // a signal handler can only reach a global

void OnSignal(int signal) {
  if (interrupted != 0) {
    std::signal(signal, SIG_DFL);
    std::raise(signal);
  }
  interrupted = 1;
}

MessageAnswer SafeAnswerTo(const Message& message) {
  return message.question == Question::kQuitAfterLostConnection ? MessageAnswer::kYes : SafeAnswer(message.buttons);
}

/// How a question is answered without a person.
struct QuestionRow {
  Question question;
  const char* flag;       ///< the flag for another answer than the safe one, in words for the user; null: there is none
  Reason reason;          ///< why the command is refused after the safe answer
  bool harmless = false;  ///< after the safe answer, the command has still done all it was called for
};

constexpr QuestionRow kQuestions[] = {
    {Question::kBringDatabaseOnline, "--bring-online answers Yes", Reason::kDatabaseAway},
    {Question::kStartDatabaseService, "--start-service answers Yes", Reason::kDatabaseAway},
    {Question::kQuitAfterLostConnection, nullptr, Reason::kDatabaseAway},
    {Question::kResetProcessedResults, "--reset-processed answers Yes", Reason::kRowsProcessed},
    {Question::kSmsCredits, "--yes answers Yes, --email-only answers No", Reason::kNotAgreed},
    {Question::kUnknownFields, "--allow-unknown-fields answers Yes", Reason::kUnknownField},
    {Question::kEmptySubject, nullptr, Reason::kEmptySubject},
    {Question::kChangeProcessedFlags, "--yes answers Yes", Reason::kNotAgreed},
    {Question::kCancelQueuedEmails, "--stop-on-error answers Yes", Reason::kOther, true},
    {Question::kRepeatDelivered, "--repeat-delivered answers Yes", Reason::kOther, true},
    {Question::kLettersInDoubt, "--in-doubt sent answers Yes, --in-doubt not-sent answers No", Reason::kLettersInDoubt},
    {Question::kLettersAgain, "--again answers Yes", Reason::kOther, true},
    {Question::kGoOnSending, "--keep-going answers Yes", Reason::kOther, true},
};

const QuestionRow& RowOf(Question question) {
  static constexpr QuestionRow kNoRow{Question::kOther, nullptr, Reason::kNotAgreed};
  for (const QuestionRow& row : kQuestions) {
    if (row.question == question) return row;
  }
  return kNoRow;
}

const char* AnswerText(MessageAnswer answer) {
  switch (answer) {
    case MessageAnswer::kYes:
      return "Yes";
    case MessageAnswer::kNo:
      return "No";
    case MessageAnswer::kCancel:
      return "Cancel";
    case MessageAnswer::kAbort:
      return "Abort";
    case MessageAnswer::kRetry:
      return "Retry";
    case MessageAnswer::kIgnore:
      return "Ignore";
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
  // Without the database, everything that start-up reads later fails, too. One message is enough.
  if (withoutDatabase_ || quitRequested_) return SafeAnswer(message.buttons);
  // A missing database cannot be brought online. The command reports that it is missing.
  if (message.reason == Reason::kNoDatabase && !answers_.contains(static_cast<int>(message.question))) {
    withoutDatabase_ = databaseMissing_ = true;
    return SafeAnswerTo(message);
  }
  // One line about the server, for the log of a scheduler.
  const bool inOneLine = message.question == Question::kGoOnSending;
  const QByteArray text = TerminalText(inOneLine ? message.text.simplified() : message.text);
  std::fprintf(stderr, "%s%s", text.constData(), inOneLine ? " " : "\n");
  if (message.buttons != MessageButtons::kOk) return Answer(message);
  const bool warning = message.icon == MessageIcon::kExclamation || message.icon == MessageIcon::kStop;
  warned_ = warned_ || warning;
  if (warning || message.reason != Reason::kOther) NoteRefusal(message.reason, message.text);
  return MessageAnswer::kOk;
}

MessageAnswer HeadlessUi::Answer(const Message& message) {
  const auto given = answers_.constFind(static_cast<int>(message.question));
  const bool isGiven = given != answers_.cend();
  const MessageAnswer answer = isGiven ? *given : SafeAnswerTo(message);
  const QuestionRow& row = RowOf(message.question);
  // A message with the buttons Abort, Retry and Ignore is no question: something failed.
  const bool failed = message.buttons == MessageButtons::kAbortRetryIgnore;
  warned_ = warned_ || failed;
  if (failed) NoteRefusal(message.reason, message.text);
  const bool declined = !failed && !isGiven && answer != MessageAnswer::kYes && !row.harmless;
  declined_ = declined_ || declined;
  withoutDatabase_ = message.question == Question::kBringDatabaseOnline && answer != MessageAnswer::kYes;
  const char* flag = isGiven ? nullptr : row.flag;
  const bool quits = message.question == Question::kQuitAfterLostConnection;
  if (declined || quits) {
    const QString hint = flag != nullptr ? QStringLiteral(" (%1)").arg(QLatin1String(flag)) : QString();
    NoteRefusal(row.reason, message.text + hint);
  }
  std::fprintf(stderr, "[answered: %s%s%s]\n", AnswerText(answer), flag != nullptr ? "; " : "",
               flag != nullptr ? flag : "");
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

void HeadlessUi::Wait(int milliseconds) {
  constexpr int kSlice = 50;  // short, so that Ctrl+C takes effect soon
  for (int left = milliseconds; left > 0 && !Interrupted(); left -= kSlice) {
    std::this_thread::sleep_for(std::chrono::milliseconds(std::min(left, kSlice)));
    PumpEvents();
  }
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
