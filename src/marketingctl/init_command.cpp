// marketingctl init: an empty host database.

#include <memory>

#include "hostdb/host_database.h"
#include "marketingctl/commands.h"
#include "marketingctl/make_database.h"
#include "marketingctl/output.h"

namespace qbx::ctl {

namespace {

struct InitArguments {
  std::string folder;
  bool replace = false;
};

int Init(const InitArguments& arguments, const GlobalFlags& flags) {
  const std::optional<QString> file =
      DatabaseFileFor(QString::fromStdString(arguments.folder), flags, arguments.replace);
  if (!file) return kRefused;
  const ExistingFile existing = arguments.replace ? ExistingFile::kReplace : ExistingFile::kRefuse;
  if (const HostDatabaseProblem problem = CreateHostDatabase(*file, existing)) return Refuse(*problem);
  if (flags.json) {
    PrintJson(QJsonObject{{QStringLiteral("database"), *file}});
  } else {
    PrintLine(QStringLiteral("Made an empty host database: ") + *file);
  }
  return kDone;
}

}  // namespace

void AddInitCommand(Runner& runner) {
  auto arguments = std::make_shared<InitArguments>();
  CLI::App& command = *runner.Root().add_subcommand("init", "Make an empty host database");
  command.add_option("DIR", arguments->folder, "Program folder; made when it is missing")->required();
  command.add_flag("--replace", arguments->replace, "Replace the database that the folder holds");
  command.footer("Example: marketingctl init garage");
  runner.AddBareCommand(command, [arguments, &runner] { return Init(*arguments, runner.Flags()); });
}

}  // namespace qbx::ctl
