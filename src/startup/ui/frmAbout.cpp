#include "startup/ui/frmAbout.h"

#include <QEvent>
#include <QFont>
#include <QKeyEvent>
#include <QObject>
#include <QPushButton>
#include <QSize>
#include <QString>
#include <QWidget>

#include "database/database_service.h"
#include "platform/ui/drawn_icon.h"
#include "platform/ui/help_window.h"
#include "platform/ui/modal.h"
#include "settings/ui/window_layout.h"
#include "startup/application.h"
#include "ui_frmAbout.h"

namespace qbx {
namespace {

constexpr char kHelp[] = R"(
<p>Which version of the program this is, and which database on which server it works with. Support asks for these.</p>
<p>Enter on the server, or a double-click, says whether its service runs.</p>)";

}  // namespace

frmAbout::frmAbout(Application& app, QWidget* parent)
    : QDialog(parent), app_(app), ui_(std::make_unique<Ui::frmAbout>()) {
  ui_->setupUi(this);
  QFont heading = font();
  heading.setPointSizeF(heading.pointSizeF() * 1.4);
  heading.setBold(true);
  ui_->lblTitle->setFont(heading);
  ui_->lblLogo->setPixmap(DrawnIcon(Drawing::kLogo).pixmap(QSize(40, 40), devicePixelRatioF()));
  ui_->lblServer->installEventFilter(this);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
}

frmAbout::~frmAbout() = default;

void frmAbout::FillIn() {
  const StartupValues& startup = app_.startup;
  const QString connected = app_.hostConnection.DatabaseName();
  setWindowTitle(QLatin1String("About ") + startup.title);
  ui_->lblTitle->setText(startup.title);
  ui_->lblVersion->setText(
      QStringLiteral("Version: %1     (Database %2)").arg(startup.shortVersion).arg(app_.eventContext.DatabaseVersion));
  ui_->lblComputer->setText(QLatin1String("This computers name: ") + app_.host.ComputerName());
  ui_->lblDatabase->setText(QLatin1String("Database Name: ") +
                            (connected.isEmpty() ? startup.databaseName : connected));
  ui_->lblServer->setText(QLatin1String("Database Server: ") + app_.hostConnection.Server());
}

void frmAbout::ShowSplash() {
  FillIn();
  ui_->lblVersion->setText(QLatin1String("Version: ") + app_.startup.shortVersion);
  for (QWidget* widget : {static_cast<QWidget*>(ui_->fraConnection), static_cast<QWidget*>(ui_->cmdOK)})
    widget->hide();
  setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
  setAttribute(Qt::WA_ShowWithoutActivating);
  adjustSize();
  show();
  // Start-up continues almost without letting events run, so the splash is painted now.
  repaint();
  app_.ui.PumpEvents();
}

void frmAbout::ShowForm(WindowLayout& layout) {
  FillIn();
  new HelpWindow(*this, [this] { return HelpText{windowTitle(), QString::fromUtf8(kHelp)}; });
  layout.RestoreWindow(*this, objectName());
  ui_->cmdOK->setFocus();
  ShowModal(*this);
  layout.SaveWindow(*this, objectName());
}

bool frmAbout::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui_->lblServer && (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)) {
    QFont shown = ui_->lblServer->font();
    shown.setUnderline(event->type() == QEvent::FocusIn);
    ui_->lblServer->setFont(shown);
  }
  bool asked = event->type() == QEvent::MouseButtonDblClick;
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    asked = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
  }
  if (watched != ui_->lblServer || !asked) return QDialog::eventFilter(watched, event);
  ShowDatabaseServiceInfo(app_.services, app_.registryStore, app_.ui);
  return true;
}

}  // namespace qbx
