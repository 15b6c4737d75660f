// What logic may ask of the person in front of the program.

#pragma once

#include <QString>

namespace qbx {

enum class MessageIcon { kNone, kInformation, kQuestion, kExclamation, kStop };

enum class MessageButtons { kOk, kYesNo, kYesNoCancel, kAbortRetryIgnore };

enum class MessageAnswer { kOk, kYes, kNo, kCancel, kAbort, kRetry, kIgnore };

/// The questions that can be answered without a person; a headless run has a flag for each. Messages that only inform,
/// and questions that only windows ask, have `kOther`.
enum class Question {
  kOther,
  kBringDatabaseOnline,
  kStartDatabaseService,
  kQuitAfterLostConnection,
  kResetProcessedResults,
  kRepeatDelivered,
  kSmsCredits,
  kUnknownFields,
  kEmptySubject,
  kCancelQueuedEmails,
  kGoOnSending,
  kChangeProcessedFlags,
  kLettersAgain,
  kLettersInDoubt,
};

/// Why something is refused, for scripts that must tell reasons apart. The headless runner gives each a code
/// (`ErrorCodes`). Windows ignore it. Everything else has `kOther`.
enum class Reason {
  kOther,
  kUsage,
  kNoUser,
  kNoFolder,
  kNoDatabase,
  kDatabaseAway,
  kStartFailed,
  kDatabaseExists,
  kUnknownCampaign,
  kAmbiguousName,
  kInvalidName,
  kNameTaken,
  kUnknownRow,
  kUnknownOption,
  kSettingsRefused,
  kRowsProcessed,
  kNotAgreed,
  kClaimed,
  kNotManager,
  kOptionsUnread,
  kNoTemplate,
  kUnknownField,
  kEmptySubject,
  kNoAccount,
  kNoCredits,
  kCreditsUnknown,
  kGatewayAway,
  kNothingToSend,
  kLettersInDoubt,
  kInterrupted,
  kScriptRefused,
};

/// One message box. Line breaks are carriage returns ("\r"); each interface converts them.
struct Message {
  QString text;
  MessageIcon icon = MessageIcon::kNone;
  MessageButtons buttons = MessageButtons::kOk;
  QString title = {};  ///< empty for the application title
  Question question = Question::kOther;
  MessageAnswer defaultAnswer = MessageAnswer::kYes;  ///< for a question; kOk for a message with one button
  Reason reason = Reason::kOther;
};

/// The answer that does the least, used when a box is not shown.
[[nodiscard]] inline MessageAnswer SafeAnswer(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::kOk:
      return MessageAnswer::kOk;
    case MessageButtons::kYesNo:
      return MessageAnswer::kNo;
    case MessageButtons::kYesNoCancel:
      return MessageAnswer::kCancel;
    case MessageButtons::kAbortRetryIgnore:
      return MessageAnswer::kAbort;
  }
  return MessageAnswer::kOk;
}

/// One input box.
struct InputRequest {
  QString prompt;
  QString title;
  QString defaultText = {};
  bool masked = false;  ///< shows "*" for every character
};

/// What the status box shows. Made by `StatusBox`.
struct StatusView {
  QString message;
  bool showCancel = false;
  bool highlighted = false;  ///< blue on white instead of the normal colours
};

/// The only way from logic to the user. There are three implementations: windows, the terminal (headless), and the
/// scripted one of the tests.
///
/// All calls come from one thread and return when they are answered. No call throws.
class UserInterface {
 public:
  virtual ~UserInterface() = default;

  /// Sets the title of message boxes that name none; start-up sets it to "QBX Marketing & Reporting Module".
  virtual void SetApplicationTitle(const QString& title) = 0;
  [[nodiscard]] virtual QString ApplicationTitle() const = 0;

  /// Shows a message box and waits.
  /// \return the button pressed; kOk for a box with one button
  virtual MessageAnswer ShowMessage(const Message& message) = 0;

  /// \return the text typed, empty when cancelled
  [[nodiscard]] virtual QString InputBox(const InputRequest& request) = 0;

  /// Shows the status box, or changes what it shows, and clears its cancel flag.
  virtual void ShowStatusBox(const StatusView& view) = 0;
  virtual void CloseStatusBox() = 0;
  /// Whether Cancel was pressed since the last ShowStatusBox.
  [[nodiscard]] virtual bool StatusCancelled() const = 0;

  /// Shows or removes the hourglass pointer.
  virtual void SetBusy(bool busy) = 0;

  /// Lets waiting window events run (repaint, Cancel, Pause).
  virtual void PumpEvents() = 0;

  /// A wait only for the eye. Windows wait and pump events; a headless run returns at once.
  /// \param milliseconds  at least 0
  virtual void Pause(int milliseconds) = 0;

  /// A wait for something outside the program, such as a service that starts. Every interface waits and pumps events.
  /// \param milliseconds  at least 0
  virtual void Wait(int milliseconds) { Pause(milliseconds); }

  /// Called when the user chose to end the program. From now on nothing is shown: boxes get the answer that does the
  /// least. When the current command has ended, windows close and a headless run stops.
  virtual void RequestQuit() = 0;
  [[nodiscard]] virtual bool QuitRequested() const = 0;
};

}  // namespace qbx
