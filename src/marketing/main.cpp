// The window program. The host product starts it with /userid:"name".

#include <QApplication>
#include <cstdio>

#include "marketing/program.h"
#include "platform/ui/look.h"
#include "platform/ui/widget_ui.h"
#include "startup/command_line.h"
#include "startup/folders.h"

namespace {

/// Reports exceptions that nobody caught, instead of ending silently.
class Application : public QApplication {
 public:
  using QApplication::QApplication;
  void SetReport(std::function<void(const QString&)> report) { report_ = std::move(report); }
  bool notify(QObject* receiver, QEvent* event) override {
    try {
      return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
      if (!report_) throw;
      report_(QString::fromUtf8(error.what()));
      return true;
    }
  }

 private:
  std::function<void(const QString&)> report_;
};

}  // namespace

int main(int argc, char** argv) {
  // Before anything that needs a display.
  QStringList words;
  for (int i = 1; i < argc; ++i)
    words << QString::fromLocal8Bit(argv[i]);
  if (const auto answer = qbx::TerminalAnswer(words)) {
    std::printf("%s\n", answer->toUtf8().constData());
    return 0;
  }
  qbx::SettleTimeZone();
  Application application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("marketing"));
  qbx::ApplyLook();
  const qbx::SystemClock clock;
  qbx::WidgetUi ui;
  qbx::MarketingProgram program(ui, {.ui = ui, .clock = clock, .folders = qbx::FindFolders()});
  application.SetReport(
      [&program](const QString& what) { program.App().errors.ShowError(0, QStringLiteral("marketing"), what, true); });
  if (program.Start(qbx::JoinCommandLine(QApplication::arguments().mid(1))) != qbx::StartOutcome::kRunning) return 0;
  return QApplication::exec();
}
