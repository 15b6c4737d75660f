// Entry point of marketingctl.

#include <CLI/CLI.hpp>
#include <QCoreApplication>

#include "marketingctl/commands.h"
#include "platform/clock.h"

int main(int argc, char** argv) {
  qbx::SettleTimeZone();
  QCoreApplication application(argc, argv);
  CLI::App root(
      "Marketing campaigns without a window: the same queries, filters, texts and e-mails, for a scheduler or a script.\nExit codes: 0 done, 1 refused or failed, 2 usage, 3 some rows failed or are in doubt, 4 paused.",
      "marketingctl");
  qbx::ctl::Runner runner(root);
  qbx::ctl::AddSampleCommand(runner);
  qbx::ctl::AddInitCommand(runner);
  qbx::ctl::AddStatusCommand(runner);
  qbx::ctl::AddOptionsCommand(runner);
  qbx::ctl::AddCampaignsCommand(runner);
  qbx::ctl::AddQueryCommand(runner);
  qbx::ctl::AddResultsCommand(runner);
  qbx::ctl::AddPreviewCommand(runner);
  qbx::ctl::AddCreditsCommand(runner);
  qbx::ctl::AddSendCommand(runner);
  qbx::ctl::AddLogCommand(runner);
  qbx::ctl::AddEncipherCommand(runner);
  qbx::ctl::AddHelpCommand(runner);
  return runner.Run(argc, argv);
}
