// Entry point of marketingctl.

#include <CLI/CLI.hpp>
#include <QGuiApplication>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <string_view>

#include "marketingctl/commands.h"
#include "platform/clock.h"

namespace {

/// Whether the command makes pages. Pages need fonts and with them most of Qt; the other commands start in a third of
/// the time without it. No display is used.
bool MakesPages(int argc, char** argv) {
  return std::any_of(argv + 1, argv + argc,
                     [](const std::string_view argument) { return argument == "report" || argument == "letters"; });
}

/// Prints Qt's messages, except the one about a scheduler's missing folder for sockets, which is harmless.
void PassOn(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (!message.contains(QLatin1String("XDG_RUNTIME_DIR")))
    std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, message)));
}

std::unique_ptr<QCoreApplication> MakeApplication(int& argc, char** argv) {
  if (!MakesPages(argc, argv)) return std::make_unique<QCoreApplication>(argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler(&PassOn);
  return std::make_unique<QGuiApplication>(argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
  qbx::SettleTimeZone();
  const std::unique_ptr<QCoreApplication> application = MakeApplication(argc, argv);
  CLI::App root(
      "Marketing campaigns without a window: the same queries, filters, texts and e-mails, for a scheduler or a script.\nExit codes: 0 done, 1 refused or failed, 2 usage, 3 some rows failed or are in doubt, 4 paused.",
      "marketingctl");
  qbx::ctl::Runner runner(root);
  qbx::ctl::AddSampleCommand(runner);
  qbx::ctl::AddInitCommand(runner);
  qbx::ctl::AddServerCommand(runner);
  qbx::ctl::AddStatusCommand(runner);
  qbx::ctl::AddConnectCommand(runner);
  qbx::ctl::AddOptionsCommand(runner);
  qbx::ctl::AddCampaignsCommand(runner);
  qbx::ctl::AddQueryCommand(runner);
  qbx::ctl::AddResultsCommand(runner);
  qbx::ctl::AddPreviewCommand(runner);
  qbx::ctl::AddCreditsCommand(runner);
  qbx::ctl::AddSendCommand(runner);
  qbx::ctl::AddLettersCommand(runner);
  qbx::ctl::AddReportCommand(runner);
  qbx::ctl::AddExportCommand(runner);
  qbx::ctl::AddLogCommand(runner);
  qbx::ctl::AddEncipherCommand(runner);
  qbx::ctl::AddHelpCommand(runner);
  return runner.Run(argc, argv);
}
