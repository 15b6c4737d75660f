#include "platform/ui/frmProcessing.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QObject>
#include <QPalette>
#include <QPoint>
#include <QPushButton>
#include <QRect>
#include <QScreen>
#include <QWindow>

#include "platform/ui/input_gate.h"
#include "platform/ui/line_breaks.h"
#include "ui_frmProcessing.h"

namespace qbx {
namespace {

constexpr Qt::WindowFlags kFlags = Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;

}  // namespace

frmProcessing::frmProcessing() : QWidget(nullptr, kFlags), ui_(std::make_unique<Ui::frmProcessing>()) {
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_QuitOnClose, false);
  ui_->setupUi(this);
  ui_->cmdCancel->setFocusPolicy(Qt::TabFocus);
  InputGate::Allow(*this);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &frmProcessing::Cancel);
  ui_->lblMessage->installEventFilter(this);
}

frmProcessing::~frmProcessing() = default;

void frmProcessing::ShowView(const StatusView& view, QWidget* owner) {
  cancelled_ = false;
  ui_->cmdCancel->setEnabled(true);
  ui_->lblMessage->setText(WithLineFeeds(view.message));
  ui_->lblInfo->clear();
  ui_->lblInfo->hide();
  ui_->cmdCancel->setVisible(view.showCancel);
  QPalette colours;
  if (view.highlighted) {
    colours.setColor(QPalette::Window, Qt::white);
    colours.setColor(QPalette::WindowText, Qt::blue);
  }
  // The colours are set for the labels, too, because under a style sheet they are not inherited.
  for (QWidget* widget : {static_cast<QWidget*>(ui_->fraInfo), static_cast<QWidget*>(ui_->lblMessage),
                          static_cast<QWidget*>(ui_->lblInfo)}) {
    widget->setPalette(colours);
  }
  setWindowTitle(ui_->lblMessage->text());
  if (isVisible()) {
    resize(width(), std::max(height(), sizeHint().height()));
    return;
  }
  Place(owner);
  show();
  raise();
}

void frmProcessing::Place(const QWidget* owner) {
  activeBefore_ = QApplication::activeWindow();
  adjustSize();
  const QScreen* screen = owner != nullptr ? owner->screen() : QGuiApplication::primaryScreen();
  QRect around = screen != nullptr ? screen->availableGeometry() : QRect(0, 0, 800, 600);
  if (owner != nullptr && owner->isVisible()) around = owner->frameGeometry();
  QRect box(QPoint(0, 0), size());
  box.moveCenter(around.center());
  move(box.topLeft());
  // The window handle is needed for the owner: a window manager keeps the box with it, and a modal owner would
  // otherwise lock the box out.
  winId();
  if (owner != nullptr) windowHandle()->setTransientParent(owner->windowHandle());
}

void frmProcessing::CloseBox() {
  if (!isVisible()) return;
  const bool wasActive = isActiveWindow();
  hide();
  windowHandle()->setTransientParent(nullptr);
  if (wasActive && activeBefore_ != nullptr && activeBefore_->isVisible()) activeBefore_->activateWindow();
}

void frmProcessing::Cancel() {
  if (!isVisible() || !ui_->cmdCancel->isVisible()) return;
  cancelled_ = true;
  ui_->cmdCancel->setEnabled(false);
}

void frmProcessing::BringToFront() {
  if (isVisible()) raise();
}

bool frmProcessing::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui_->lblMessage && event->type() == QEvent::MouseButtonRelease &&
      static_cast<QMouseEvent*>(event)->button() == Qt::RightButton) {
    Q_EMIT Dismissed();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

void frmProcessing::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    Cancel();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void frmProcessing::closeEvent(QCloseEvent* event) {
  // A request to close is a Cancel. The box closes when the work is done.
  Cancel();
  event->ignore();
}

}  // namespace qbx
