#include "platform/ui/widget_ui.h"

#include <QApplication>
#include <QCoreApplication>
#include <QEventLoop>
#include <QGuiApplication>
#include <QMessageBox>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <QWidgetList>

#include "platform/ui/frmInputBox.h"
#include "platform/ui/frmProcessing.h"
#include "platform/ui/input_gate.h"
#include "platform/ui/line_breaks.h"
#include "platform/ui/modal.h"

namespace qbx {
namespace {

/// The most characters that a message box shows. The rest of a longer text is under "Show Details...", so that the
/// buttons stay on the screen.
constexpr int kLongestText = 3000;
constexpr int kMostLines = 30;

QMessageBox::Icon IconOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::kInformation:
      return QMessageBox::Information;
    case MessageIcon::kQuestion:
      return QMessageBox::Question;
    case MessageIcon::kExclamation:
      return QMessageBox::Warning;
    case MessageIcon::kStop:
      return QMessageBox::Critical;
    case MessageIcon::kNone:
      break;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButton ButtonOf(MessageAnswer answer) {
  switch (answer) {
    case MessageAnswer::kYes:
      return QMessageBox::Yes;
    case MessageAnswer::kNo:
      return QMessageBox::No;
    case MessageAnswer::kCancel:
      return QMessageBox::Cancel;
    case MessageAnswer::kAbort:
      return QMessageBox::Abort;
    case MessageAnswer::kRetry:
      return QMessageBox::Retry;
    case MessageAnswer::kIgnore:
      return QMessageBox::Ignore;
    case MessageAnswer::kOk:
      break;
  }
  return QMessageBox::Ok;
}

MessageAnswer AnswerOf(int button) {
  switch (button) {
    case QMessageBox::Yes:
      return MessageAnswer::kYes;
    case QMessageBox::No:
      return MessageAnswer::kNo;
    case QMessageBox::Cancel:
      return MessageAnswer::kCancel;
    case QMessageBox::Abort:
      return MessageAnswer::kAbort;
    case QMessageBox::Retry:
      return MessageAnswer::kRetry;
    case QMessageBox::Ignore:
      return MessageAnswer::kIgnore;
    default:
      return MessageAnswer::kOk;
  }
}

void SetButtons(QMessageBox& box, const Message& message) {
  switch (message.buttons) {
    case MessageButtons::kOk:
      box.setStandardButtons(QMessageBox::Ok);
      box.setDefaultButton(QMessageBox::Ok);
      box.setEscapeButton(QMessageBox::Ok);
      return;
    case MessageButtons::kYesNo:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
      box.setEscapeButton(QMessageBox::No);
      break;
    case MessageButtons::kYesNoCancel:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
      box.setEscapeButton(QMessageBox::Cancel);
      break;
    case MessageButtons::kAbortRetryIgnore:
      box.setStandardButtons(QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore);
      box.setEscapeButton(QMessageBox::Abort);
      break;
  }
  box.setDefaultButton(ButtonOf(message.defaultAnswer));
}

void SetText(QMessageBox& box, const QString& text) {
  box.setTextFormat(Qt::PlainText);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  QString shown = text.section(u'\n', 0, kMostLines - 1).left(kLongestText);
  if (shown.size() < text.size()) {
    shown += QStringLiteral("...");
    box.setDetailedText(text);
  }
  box.setText(shown);
}

}  // namespace

/// Shows the normal pointer and accepts input while a box waits for the user.
class WidgetUi::BoxOpen {
 public:
  explicit BoxOpen(WidgetUi& ui) : ui_(ui), wasBusy_(ui.busy_), opened_(*ui.gate_) { ui_.SetBusy(false); }
  ~BoxOpen() { ui_.SetBusy(wasBusy_); }
  BoxOpen(const BoxOpen&) = delete;
  BoxOpen& operator=(const BoxOpen&) = delete;

 private:
  WidgetUi& ui_;
  bool wasBusy_;
  InputGate::Opened opened_;
};

WidgetUi::WidgetUi() {
  gate_ = std::make_unique<InputGate>();
  processing_ = std::make_unique<frmProcessing>();
  QObject::connect(gate_.get(), &InputGate::CloseRefused, processing_.get(), &frmProcessing::BringToFront);
  QObject::connect(gate_.get(), &InputGate::EscapePressed, processing_.get(), &frmProcessing::Cancel);
  QObject::connect(gate_.get(), &InputGate::BecameIdle, processing_.get(), [this] { CloseWhenIdle(); });
  QObject::connect(processing_.get(), &frmProcessing::Dismissed, processing_.get(), [this] {
    CloseStatusBox();
    SetBusy(false);
  });
}

WidgetUi::~WidgetUi() {
  SetBusy(false);
}

void WidgetUi::SetApplicationTitle(const QString& title) {
  title_ = title;
}

MessageAnswer WidgetUi::ShowMessage(const Message& message) {
  if (quitRequested_) return SafeAnswer(message.buttons);
  const BoxOpen open(*this);
  QMessageBox box(Owner());
  box.setObjectName(QStringLiteral("MessageBox"));
  box.setWindowTitle(message.title.isEmpty() ? title_ : message.title);
  box.setIcon(IconOf(message.icon));
  SetText(box, WithLineFeeds(message.text));
  SetButtons(box, message);
  // The status box is above all windows, and a question must be above it.
  if (processing_->isVisible()) box.setWindowFlag(Qt::WindowStaysOnTopHint);
  return AnswerOf(ShowModal(box));
}

QString WidgetUi::InputBox(const InputRequest& request) {
  if (quitRequested_) return {};
  const BoxOpen open(*this);
  frmInputBox box(Owner());
  if (memory_.restore) memory_.restore(box, box.objectName());
  QString answer = box.QBXInputBox(request);
  if (memory_.keep) memory_.keep(box, box.objectName());
  return answer;
}

void WidgetUi::ShowStatusBox(const StatusView& view) {
  if (!quitRequested_) processing_->ShowView(view, Owner());
}

void WidgetUi::CloseStatusBox() {
  processing_->CloseBox();
}

bool WidgetUi::StatusCancelled() const {
  return quitRequested_ || processing_->Cancelled();
}

void WidgetUi::SetBusy(bool busy) {
  if (busy == busy_) return;
  busy_ = busy;
  if (busy) {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    QGuiApplication::restoreOverrideCursor();
  }
}

void WidgetUi::PumpEvents() {
  const InputGate::Closed closed(*gate_);
  QCoreApplication::processEvents();
}

void WidgetUi::Pause(int milliseconds) {
  if (quitRequested_) return;
  const InputGate::Closed closed(*gate_);
  QEventLoop loop;
  QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec();
}

void WidgetUi::RequestQuit() {
  quitRequested_ = true;
  closePending_ = true;
  CloseWhenIdle();
}

void WidgetUi::CloseWhenIdle() {
  if (!closePending_ || mainWindow_ == nullptr) return;
  QTimer::singleShot(0, mainWindow_, [this] {
    if (!closePending_ || !gate_->Idle()) return;  // while logic lets events run; this is called again afterwards
    closePending_ = false;
    while (QWidget* modal = QApplication::activeModalWidget()) {
      if (!modal->close()) return;
    }
    mainWindow_->close();
  });
}

void WidgetUi::SetMainWindow(QWidget* window) {
  mainWindow_ = window;
  CloseWhenIdle();
}

void WidgetUi::SetWindowMemory(WindowMemory memory) {
  memory_ = std::move(memory);
}

void WidgetUi::AllowWhileWorking(QWidget& widget) {
  InputGate::Allow(widget);
}

void WidgetUi::HoldWhileWorking(QTimer& timer) {
  InputGate::Hold(timer);
}

QWidget* WidgetUi::Owner() const {
  if (processing_->isVisible()) return processing_.get();
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  QWidget* const active = QApplication::activeWindow();
  if (active != nullptr && active != processing_.get()) return active;
  if (mainWindow_ != nullptr) return mainWindow_;
  const QWidgetList windows = QApplication::topLevelWidgets();
  const auto shown =
      std::find_if(windows.begin(), windows.end(), [](const QWidget* window) { return window->isVisible(); });
  return shown == windows.end() ? nullptr : *shown;
}

}  // namespace qbx
