// The window program. The host product starts it with /userid:"name".

#include <QApplication>

#include "marketing/program.h"
#include "platform/ui/look.h"
#include "platform/ui/widget_ui.h"
#include "startup/command_line.h"
#include "startup/folders.h"

int main(int argc, char** argv) {
  qbx::SettleTimeZone();
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("marketing"));
  qbx::ApplyLook();
  const qbx::SystemClock clock;
  qbx::WidgetUi ui;
  qbx::MarketingProgram program(ui, {.ui = ui, .clock = clock, .folders = qbx::FindFolders()});
  if (program.Start(qbx::JoinCommandLine(QApplication::arguments().mid(1))) != qbx::StartOutcome::kRunning) return 0;
  return QApplication::exec();
}
