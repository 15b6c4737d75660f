// marketingctl sample: a believable garage to try the program on.

#include <memory>

#include "hostdb/sample_garage.h"
#include "marketingctl/commands.h"
#include "marketingctl/date_argument.h"
#include "marketingctl/make_database.h"
#include "marketingctl/output.h"

namespace qbx::ctl {

namespace {

struct SampleArguments {
  std::string folder;
  int customers = 2000;
  quint64 seed = 1;
  std::string asOf;
  bool replace = false;
};

int MakeSample(const SampleArguments& arguments, const GlobalFlags& flags) {
  const QString folder = QString::fromStdString(arguments.folder);
  const QDate asOf = arguments.asOf.empty() ? QDate::currentDate() : DayArgument("--as-of", arguments.asOf);
  const SampleGarageSettings settings{arguments.customers, arguments.seed, asOf};
  const std::optional<QString> file = DatabaseFileFor(folder, flags, arguments.replace);
  if (!file) return kRefused;
  const ExistingFile existing = arguments.replace ? ExistingFile::kReplace : ExistingFile::kRefuse;
  if (const HostDatabaseProblem problem = MakeSampleGarage(*file, settings, existing)) return Refuse(*problem);
  if (flags.json) {
    PrintJson(QJsonObject{{QStringLiteral("database"), *file}, {QStringLiteral("customers"), settings.customers}});
  } else {
    PrintLine(QStringLiteral("Made a sample garage with %1 customers: %2").arg(settings.customers).arg(*file));
  }
  return kDone;
}

}  // namespace

void AddSampleCommand(Runner& runner) {
  auto arguments = std::make_shared<SampleArguments>();
  CLI::App& command = *runner.Root().add_subcommand("sample", "Make a sample garage to try the program on");
  command.add_option("DIR", arguments->folder, "Program folder; made when it is missing")->required();
  command.add_option("--customers", arguments->customers, "Number of customers")
      ->capture_default_str()
      ->check(CLI::Range(1, 5'000'000));
  command.add_option("--seed", arguments->seed, "The same seed and date make the same garage")->capture_default_str();
  command.add_option("--as-of", arguments->asOf,
                     "Day that reminders and invoices are laid around (yyyy-mm-dd, default: today)");
  command.add_flag("--replace", arguments->replace, "Replace the database that the folder holds");
  command.footer("Example: marketingctl sample garage --customers 500 --seed 7");
  runner.AddBareCommand(command, [arguments, &runner] { return MakeSample(*arguments, runner.Flags()); });
}

}  // namespace qbx::ctl
