// marketingctl encipher: stored secrets.

#include <memory>

#include "marketingctl/commands.h"
#include "marketingctl/output.h"
#include "marketingctl/start_checks.h"
#include "marketingctl/text_argument.h"
#include "settings/host_cipher.h"
#include "settings/service_settings.h"
#include "startup/folders.h"

namespace qbx::ctl {

namespace {

struct EncipherArguments {
  std::string secret = "@-";
  bool marked = false;
  bool makeKey = false;
};

int Encipher(const EncipherArguments& arguments, const GlobalFlags& flags) {
  if (arguments.secret.empty() || arguments.secret[0] != '@') {
    Refuse(Reason::kUsage, QStringLiteral("A secret is read from a file (@FILE) or from standard input."));
    return kUsage;
  }
  const Folders folders = FindFolders(QString::fromStdString(flags.folder));
  if (const auto problem = FolderProblem(folders.program)) return Refuse(problem->reason, problem->text);
  const QString keyFile = ServiceKeyFile(IniFile(folders.program + QStringLiteral("QBX.INI")), folders.program);
  if (arguments.makeKey) {
    const QString problem = HostCipher::CreateKeyFile(keyFile);
    if (!problem.isEmpty()) return Refuse(problem);
  }
  const SystemClock clock;
  const LogFile log(clock, folders.program + QStringLiteral("MARKETING.LOG"));
  HostCipher cipher(keyFile, log);
  QString error;
  const QString secret = TextArgument(arguments.secret);
  if (secret.isEmpty()) return Refuse(QStringLiteral("The secret is empty, so nothing was enciphered."));
  const std::optional<QString> enciphered = cipher.Encipher(secret, &error);
  if (!enciphered) return Refuse(error + QStringLiteral(" (--make-key makes a missing key file.)"));
  const QString text = (arguments.marked ? QLatin1String(kMarkedSecretPrefix) : QLatin1String()) + *enciphered;
  if (flags.json) {
    PrintJson(QJsonObject{{QStringLiteral("enciphered"), text}});
  } else {
    PrintLine(text);
  }
  return kDone;
}

}  // namespace

void AddEncipherCommand(Runner& runner) {
  auto arguments = std::make_shared<EncipherArguments>();
  CLI::App& command =
      *runner.Root().add_subcommand("encipher", "Encipher a password for the INI file, the registry or SMTP_Password");
  command.add_option("SECRET", arguments->secret, "@FILE, or @- for standard input")->capture_default_str();
  command.add_flag("--marked", arguments->marked, "Put the marker of the option SMTP_Password in front");
  command.add_flag("--make-key", arguments->makeKey, "Make the key file first when there is none");
  command.footer("Example: marketingctl --folder garage encipher --make-key @password.txt");
  runner.AddBareCommand(command, [arguments, &runner] { return Encipher(*arguments, runner.Flags()); });
}

}  // namespace qbx::ctl
