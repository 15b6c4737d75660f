// The window program with splash and log-on. Ends at the first paint of the main window.

#include <unistd.h>

#include <QtWidgets>

#include "marketing/program.h"
#include "platform/ui/look.h"
#include "platform/ui/widget_ui.h"
#include "startup/command_line.h"
#include "startup/folders.h"

namespace {

class EndAtFirstPaint : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && watched->objectName() == QLatin1String("frmMain"))
      QTimer::singleShot(0, [] { _exit(0); });
    return QObject::eventFilter(watched, event);
  }
};

}  // namespace

int main(int argc, char** argv) {
  qbx::SettleTimeZone();
  QApplication application(argc, argv);
  qbx::ApplyLook();
  EndAtFirstPaint end;
  application.installEventFilter(&end);
  const qbx::SystemClock clock;
  qbx::WidgetUi ui;
  qbx::MarketingProgram program(ui, {.ui = ui, .clock = clock, .folders = qbx::FindFolders()});
  if (program.Start(qbx::JoinCommandLine(QApplication::arguments().mid(1))) != qbx::StartOutcome::kRunning) return 1;
  return QApplication::exec();
}
