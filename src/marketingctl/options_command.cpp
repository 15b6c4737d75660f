// marketingctl options: the company's option rows of the host database.

#include <memory>
#include <set>

#include "marketingctl/closest_name.h"
#include "marketingctl/commands.h"
#include "marketingctl/option_values.h"
#include "marketingctl/output.h"
#include "marketingctl/text_argument.h"
#include "settings/options.h"
#include "util/text.h"

namespace qbx::ctl {

namespace {

constexpr char kMasked[] = "********";

struct OptionsArguments {
  std::string key;
  std::string value;
};

/// The key of a name. When both rows have it, the key of the company's own row, which the program reads.
const OptionKey* FindKey(const QString& name) {
  const OptionKey* found = nullptr;
  for (const OptionKey& key : OptionKeys()) {
    if (EqualsNoCase(QLatin1String(key.name), name)) found = &key;
  }
  return found;
}

QString CompanyOf(const Application& app, const OptionKey& key) {
  return key.source == OptionSource::kCompanyA ? QStringLiteral("A") : app.startup.companyCode;
}

QString Shown(const Application& app, const OptionKey& key) {
  const QString text = OptionText(app.options, key);
  return key.IsSecret() && !text.isEmpty() ? QLatin1String(kMasked) : text;
}

int UnknownKey(const std::string& name) {
  QStringList names;
  for (const OptionKey& key : OptionKeys())
    names << QLatin1String(key.name);
  return Refuse(Reason::kUnknownOption, QStringLiteral("There is no option \"") + QString::fromStdString(name) +
                                            QStringLiteral("\". \"options list\" shows all.") +
                                            DidYouMean(QString::fromStdString(name), names));
}

int ListOptions(Program& program) {
  QJsonObject object;
  std::set<QString> seen;
  for (const OptionKey& key : OptionKeys()) {
    const QString name = QLatin1String(key.name);
    object.insert(name, Shown(program.app, key));
    if (!program.json && seen.insert(name).second)
      PrintLine(name.leftJustified(36) + Shown(program.app, *FindKey(name)).simplified());
  }
  if (program.json) PrintJson(object);
  return kDone;
}

int GetOption(Program& program, const std::string& name) {
  const OptionKey* key = FindKey(QString::fromStdString(name));
  if (!key) return UnknownKey(name);
  if (program.json) {
    PrintJson(QJsonObject{{QLatin1String(key->name), Shown(program.app, *key)}});
  } else {
    PrintLine(Shown(program.app, *key));
  }
  return kDone;
}

/// Writes one field of the company's row. The statement does not contain the value, because a statement may get into a
/// log.
int Store(Application& app, const OptionKey& key, const Value& value) {
  const QString column = QLatin1String(key.name);
  try {
    app.connection.Driver().UpdateRow(QStringLiteral("_Options"), QStringLiteral("Options_Company"),
                                      CompanyOf(app, key), {&column, 1}, {&value, 1});
    return kDone;
  } catch (const DatabaseError& error) {
    return Refuse(QStringLiteral("The option was not stored: ") + error.Description());
  }
}

int SetOption(Program& program, const OptionsArguments& arguments) {
  const OptionKey* key = FindKey(QString::fromStdString(arguments.key));
  if (!key) return UnknownKey(arguments.key);
  if (key->IsSecret() && (arguments.value.empty() || arguments.value[0] != '@')) {
    // Every user of the computer can see a command line, and it stays in the shell's history.
    Refuse(Reason::kUsage, QStringLiteral("A password is set from a file or from standard input: options set ") +
                               QLatin1String(key->name) + QStringLiteral(" @FILE (or @-)."));
    return kUsage;
  }
  const QString value = TextArgument(arguments.value);
  QString problem;
  const std::optional<Value> typed = OptionValue(*key, value, problem);
  if (!typed) {
    Refuse(Reason::kUsage,
           QStringLiteral("\"%1\" does not fit %2, which is %3.").arg(value, QLatin1String(key->name), problem));
    return kUsage;
  }
  if (const int code = Store(program.app, *key, *typed); code != kDone) return code;
  if (program.json)
    PrintJson(QJsonObject{{QLatin1String(key->name), key->IsSecret() ? QLatin1String(kMasked) : value}});
  return kDone;
}

}  // namespace

void AddOptionsCommand(Runner& runner) {
  auto arguments = std::make_shared<OptionsArguments>();
  CLI::App& options =
      *runner.Root().add_subcommand("options", "List, read and set the company's options in the host database");
  options.require_subcommand(1);
  options.fallthrough();
  CLI::App& list = *options.add_subcommand("list", "All keys with their values; passwords are masked");
  list.fallthrough();
  list.footer("Example: marketingctl --folder garage --user Pat options list --json");
  runner.AddCommand(list, ListOptions);
  CLI::App& get = *options.add_subcommand("get", "One value");
  get.fallthrough();
  get.footer("Example: marketingctl --folder garage --user Pat options get SMS_Server");
  get.add_option("KEY", arguments->key, "Its name, as \"options list\" shows it")->required();
  runner.AddCommand(get, [arguments](Program& program) { return GetOption(program, arguments->key); });
  CLI::App& set =
      *options.add_subcommand("set", "Set one value: on/off, a number, or text (@FILE, @- for standard input)");
  set.fallthrough();
  set.add_option("KEY", arguments->key, "Its name, as \"options list\" shows it")->required();
  set.add_option("VALUE", arguments->value, "Its value; passwords only as @FILE or @-")->required();
  set.footer(
      "Examples: marketingctl --folder garage --user Pat options set SMS_Server 127.0.0.1:8080\n          marketingctl --folder garage --user Pat options set SMTP_Password @password.txt");
  runner.AddCommand(set, [arguments](Program& program) { return SetOption(program, *arguments); });
}

}  // namespace qbx::ctl
