// The commands of marketingctl, one file each.

#pragma once

#include "marketingctl/runner.h"

namespace qbx::ctl {

void AddSampleCommand(Runner& runner);
void AddInitCommand(Runner& runner);
void AddServerCommand(Runner& runner);
void AddStatusCommand(Runner& runner);
void AddConnectCommand(Runner& runner);
void AddOptionsCommand(Runner& runner);
void AddCampaignsCommand(Runner& runner);
void AddQueryCommand(Runner& runner);
void AddResultsCommand(Runner& runner);
void AddPreviewCommand(Runner& runner);
void AddCreditsCommand(Runner& runner);
void AddSendCommand(Runner& runner);
void AddLettersCommand(Runner& runner);
void AddReportCommand(Runner& runner);
void AddExportCommand(Runner& runner);
void AddLogCommand(Runner& runner);
void AddEncipherCommand(Runner& runner);
void AddHelpCommand(Runner& runner);

}  // namespace qbx::ctl
