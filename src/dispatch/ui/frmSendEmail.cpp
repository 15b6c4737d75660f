#include "dispatch/ui/frmSendEmail.h"

#include <QApplication>
#include <QMainWindow>
#include <QPoint>
#include <QPushButton>
#include <QString>
#include <QWidget>

#include "platform/ui/help_window.h"
#include "platform/ui/widget_ui.h"
#include "ui_frmSendEmail.h"

namespace qbx {

namespace {

constexpr int kShowEvery = 40;  // milliseconds
constexpr char kSendingText[] = "Sending Email...";
constexpr char kHelp[] = R"(
<p>An e-mail is on its way to the mail server. In a mailshot the window stays for all of them and goes by itself;
<b>Pause Sending</b> on step 5 stops after the customer whose messages are on their way.</p>
<p>When a mail server refuses and you asked to see why, its answer stands here until you close the window with Esc or
<b>Close</b>. What it says about the sender or the password is set on the Communication Tab in System Settings.</p>)";

}  // namespace

frmSendEmail::frmSendEmail() : ui_(std::make_unique<Ui::frmSendEmail>()) {
  ui_->setupUi(this);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_QuitOnClose, false);
  WidgetUi::AllowWhileWorking(*this);
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::hide);
}

frmSendEmail::~frmSendEmail() = default;

void frmSendEmail::Open(bool viaQbxServer) {
  if (help_ == nullptr)
    help_ = new HelpWindow(*this, [this] { return HelpText{windowTitle(), QString::fromUtf8(kHelp)}; });
  ui_->fraSend->setTitle(viaQbxServer ? QStringLiteral("Sending Email via the QBX Email Server")
                                      : QStringLiteral("Sending Email"));
  ui_->lblInfo->setVisible(viaQbxServer);
  ui_->txtMsg->clear();
  ui_->txtMsg->hide();
  ui_->cmdClose->setEnabled(false);
  status_ = QLatin1String(kSendingText);
  progress_ = QLatin1String(kSendingText);
  ShowTexts(true);
  layout()->activate();
  resize(width(), minimumSizeHint().height());
  if (!isVisible()) PlaceOverMainWindow();
  show();
}

/// Puts the window below the middle of the main window, whose buttons stay visible.
void frmSendEmail::PlaceOverMainWindow() {
  for (const QWidget* window : QApplication::topLevelWidgets()) {
    if (qobject_cast<const QMainWindow*>(window) == nullptr || !window->isVisible()) continue;
    move(window->frameGeometry().center() - QPoint(width() / 2, 0));
  }
}

void frmSendEmail::SetStatus(const QString& text) {
  // A count-down is shown at once; the usual text of each message in a run can wait.
  const bool news = text != QLatin1String(kSendingText);
  status_ = text;
  ShowTexts(news);
}

void frmSendEmail::SetProgress(const QString& text) {
  progress_ = text;
  ShowTexts(false);
}

void frmSendEmail::ShowTexts(bool atOnce) {
  if (!atOnce && shown_.isValid() && shown_.elapsed() < kShowEvery) return;
  shown_.start();
  ui_->lblStatus->setText(status_);
  ui_->lblProgress->setText(progress_);
}

void frmSendEmail::ShowFailure(const QString& error) {
  status_ = QStringLiteral("Send Failed");
  progress_.clear();
  ShowTexts(true);
  ui_->txtMsg->setPlainText(error);
  ui_->txtMsg->show();
  ui_->cmdClose->setEnabled(true);
  resize(width(), sizeHint().height());
  activateWindow();
  ui_->cmdClose->setFocus();
}

void frmSendEmail::Close() {
  hide();
}

void frmSendEmail::reject() {
  if (ui_->cmdClose->isEnabled()) QDialog::reject();
}

}  // namespace qbx
