#include "marketing/ui/help_menu.h"

#include <QAction>
#include <QDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QObject>
#include <QString>

#include "marketing/ui/command_guard.h"
#include "startup/application.h"
#include "startup/back_up_database.h"
#include "startup/ui/frmAbout.h"

namespace qbx {
namespace {

void OpenLogFile(Application& app) {
  const QString path = app.log.Path();
  if (!QFileInfo::exists(path)) {
    app.ui.ShowMessage({.text = QStringLiteral("Nothing has been logged yet."), .icon = MessageIcon::kInformation});
  } else if (!app.shell.Open(path)) {
    app.ui.ShowMessage({.text = QStringLiteral("The log file could not be opened. It is here:\r\r") + path,
                        .icon = MessageIcon::kExclamation});
  }
}

void BackUp(QMainWindow& window, Application& app) {
  QFileDialog dialog(&window, QStringLiteral("Back up the database"), app.startup.ProgramFolder);
  dialog.setObjectName(QStringLiteral("dlgBackup"));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setNameFilter(QStringLiteral("Database (*.db)"));
  dialog.setDefaultSuffix(QStringLiteral("db"));
  dialog.selectFile(app.hostConnection.DatabaseName() + app.clock.Today().toString(QStringLiteral("-yyyy-MM-dd")));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return;
  const CommandGuard guard(window);
  BackUpDatabase(app, dialog.selectedFiles().constFirst());
}

}  // namespace

void AddHelpMenu(QMainWindow& window, QAction& pageHelp, Application& app, WindowLayout& layout) {
  QMenu& help = *window.menuBar()->addMenu(QStringLiteral("&Help"));
  help.setObjectName(QStringLiteral("mnuHelp"));
  help.addAction(&pageHelp);
  help.addSeparator();
  const auto add = [&](const char* name, const QString& text, const std::function<void()>& command) {
    QAction* entry = help.addAction(text);
    entry->setObjectName(QString::fromLatin1(name));
    QObject::connect(entry, &QAction::triggered, &window, command);
  };
  add("mnuLog", QStringLiteral("Open the &log file"), [&app] { OpenLogFile(app); });
  if (CanBackUpDatabase(app))
    add("mnuBackup", QStringLiteral("&Back up the database..."), [&window, &app] { BackUp(window, app); });
  help.addSeparator();
  add("mnuAbout", QStringLiteral("&About"), [&window, &app, &layout] { frmAbout(app, &window).ShowForm(layout); });
}

}  // namespace qbx
