#include "platform/ui/help_window.h"

#include <QAction>
#include <QEvent>
#include <QKeySequence>
#include <QLabel>
#include <QObject>
#include <QRect>
#include <QScreen>
#include <QSize>
#include <QTextBrowser>
#include <QVBoxLayout>
#include <QWidget>

namespace qbx {
namespace {

constexpr QSize kHelpSize(400, 540);
constexpr int kIndent = 18;  // of a list
constexpr int kMargin = 10;

}  // namespace

HelpWindow::HelpWindow(QWidget& owner, std::function<HelpText()> text)
    : QDialog(&owner, Qt::Tool),
      owner_(owner),
      text_(std::move(text)),
      txtHelp_(new QTextBrowser(this)),
      command_(new QAction(QStringLiteral("&What this page does"), &owner)) {
  setObjectName(QStringLiteral("frmHelp"));
  txtHelp_->setObjectName(QStringLiteral("txtHelp"));
  txtHelp_->setAccessibleName(QStringLiteral("Help"));
  txtHelp_->setTabChangesFocus(true);
  txtHelp_->document()->setIndentWidth(kIndent);
  txtHelp_->document()->setDocumentMargin(kMargin);
  auto* hint = new QLabel(QStringLiteral("Esc or F1 closes this window."), this);
  auto* room = new QVBoxLayout(this);
  room->addWidget(txtHelp_);
  room->addWidget(hint);
  resize(kHelpSize);

  command_->setObjectName(QStringLiteral("mnuPageHelp"));
  command_->setShortcut(QKeySequence(Qt::Key_F1));
  owner.addAction(command_);
  // F1 also works in the help window, because a window's shortcuts stay active while its tool window has the focus.
  connect(command_, &QAction::triggered, this, [this] { isActiveWindow() ? reject() : OpenBeside(); });
  owner.installEventFilter(this);
}

void HelpWindow::OpenBeside() {
  if (!isVisible()) Place();
  show();
  ShowText();
  activateWindow();
  txtHelp_->setFocus();
}

void HelpWindow::ShowText() {
  if (!isVisible()) return;
  const HelpText text = text_();
  setWindowTitle(text.title);
  txtHelp_->setHtml(QStringLiteral("<h3>%1</h3>%2").arg(text.title.toHtmlEscaped(), text.html));
}

/// Places the window to the right of the owner if the screen has room, otherwise over the owner's right edge.
void HelpWindow::Place() {
  const QRect owner = owner_.frameGeometry();
  const QRect screen = owner_.screen()->availableGeometry();
  const int left = std::min(owner.right() + 1, screen.right() + 1 - width());
  move(std::max(left, screen.left()),
       std::clamp(owner.top(), screen.top(), std::max(screen.top(), screen.bottom() + 1 - height())));
}

void HelpWindow::done(int result) {
  QDialog::done(result);
  if (owner_.isVisible()) owner_.activateWindow();
}

bool HelpWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &owner_ && event->type() == QEvent::Hide && isVisible()) QDialog::done(QDialog::Rejected);
  return QDialog::eventFilter(watched, event);
}

}  // namespace qbx
