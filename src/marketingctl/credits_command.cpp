// marketingctl credits: the balance of the SMS account.

#include "dispatch/mailshot_checks.h"
#include "marketingctl/commands.h"
#include "marketingctl/output.h"
#include "util/text.h"

namespace qbx::ctl {

namespace {

int Credits(Program& program) {
  const SmsGateway::Credits credits = program.desk.gateway.GetSMSCredits();
  if (!credits.error.isEmpty()) return Refuse(Reason::kGatewayAway, credits.error);
  if (credits.balance < 0) {
    program.ui.ShowMessage(CreditsUnknownMessage(program.app.service.supportTelephone));
    return kRefused;
  }
  if (program.json) {
    PrintJson(QJsonObject{{QStringLiteral("credits"), credits.balance}});
  } else {
    PrintLine(ShortestNumber(credits.balance) + QStringLiteral(" SMS credits"));
  }
  return kDone;
}

}  // namespace

void AddCreditsCommand(Runner& runner) {
  CLI::App& command = *runner.Root().add_subcommand("credits", "Ask the SMS gateway for the account's balance");
  command.footer("Example: marketingctl --folder garage --user Pat credits");
  runner.AddCommand(command, Credits);
}

}  // namespace qbx::ctl
