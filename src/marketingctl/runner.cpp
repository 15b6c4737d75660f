#include "marketingctl/runner.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "marketingctl/closest_name.h"
#include "marketingctl/output.h"
#include "marketingctl/start_checks.h"
#include "startup/folders.h"
#include "startup/program_version.h"

namespace qbx::ctl {

namespace {

QString Text(const std::string& text) {
  return QString::fromStdString(text);
}

/// The innermost command that the command line names.
const CLI::App& Innermost(const CLI::App& root) {
  const CLI::App* app = &root;
  while (!app->get_subcommands().empty())
    app = app->get_subcommands().back();
  return *app;
}

QStringList FlagNames(const CLI::App& app) {
  QStringList names;
  for (const CLI::Option* option : app.get_options()) {
    for (const std::string& name : option->get_lnames())
      names << QStringLiteral("--") + Text(name);
  }
  return names;
}

}  // namespace

QStringList CommandNames(const CLI::App& app) {
  QStringList names;
  for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
    names << Text(command->get_name());
  return names;
}

Runner::Runner(CLI::App& root) : root_(root) {
  root_.require_subcommand(1);
  root_.fallthrough();
  root_.set_version_flag("--version", "marketingctl " + ProgramVersion().toStdString(), "Print the version");
  root_
      .add_option("--folder", flags_.folder,
                  "Program folder: INI file, database, log and registry/ (default: QBX_PROGRAM_FOLDER)")
      ->type_name("DIR");
  root_.add_option("--database", flags_.database, "Name of the host database (default: as the edition says)")
      ->type_name("NAME");
  root_.add_option("--instance", flags_.instance, "Instance of the host product")->type_name("NAME");
  root_
      .add_option(
          "--user", flags_.user,
          "Who this is done as; QBX_USER does as well. Needed by all but sample, init, server, connect and encipher")
      ->envname("QBX_USER")
      ->type_name("NAME");
  root_.add_flag("--json", flags_.json, "Print JSON for scripts instead of text");
  root_.add_flag("--bring-online", flags_.bringOnline, "Bring the database online when it is not");
  root_.add_flag("--start-service", flags_.startService,
                 "Try to start the database service of this computer when it does not answer");
}

void Runner::AddCommand(CLI::App& command, Action action) {
  command.callback(
      [this, action = std::move(action)] { chosen_ = [this, action] { return Start(action, Needs::kConnection); }; });
}

void Runner::AddOfflineCommand(CLI::App& command, Action action) {
  command.callback(
      [this, action = std::move(action)] { chosen_ = [this, action] { return Start(action, Needs::kStart); }; });
}

void Runner::AddUnconnectedCommand(CLI::App& command, Action action) {
  command.callback(
      [this, action = std::move(action)] { chosen_ = [this, action] { return Start(action, Needs::kNames); }; });
}

void Runner::AddUnloggedCommand(CLI::App& command, Action action) {
  command.callback([this, action = std::move(action)] {
    chosen_ = [this, action] { return Start(action, Needs::kNamesUnlogged); };
  });
}

void Runner::AddBareCommand(CLI::App& command, std::function<int()> action) {
  command.callback([this, action = std::move(action)] { chosen_ = action; });
}

int Runner::Run(int argc, char** argv) {
  // Looked for by hand: when the line cannot be parsed, no flag is set.
  const bool json = std::find(argv, argv + argc, std::string_view("--json")) != argv + argc;
  const int code = Parse(argc, argv);
  if (json && !JsonPrinted() && (code == kRefused || code == kUsage)) PrintJson(ErrorJson());
  return code;
}

int Runner::Parse(int argc, char** argv) {
  try {
    root_.parse(argc, argv);
    return chosen_ ? chosen_() : kUsage;
  } catch (const CLI::Success& success) {  // --help, --version
    return root_.exit(success);
  } catch (const CLI::ParseError& error) {
    return Misused(error);
  } catch (const std::exception& error) {
    return Refuse(QString::fromUtf8(error.what()));
  }
}

int Runner::Misused(const CLI::ParseError& error) const {
  const std::vector<std::string> strange = root_.remaining(true);
  const bool missing = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr && !strange.empty();
  const bool unknownFlag = missing && strange.front().starts_with('-');
  const bool unknownCommand = missing && !unknownFlag;
  QString text = QString::fromUtf8(error.what());
  if (unknownCommand) text = QStringLiteral("There is no command \"%1\".").arg(Text(strange.front()));
  if (unknownFlag) text = QStringLiteral("There is no flag \"%1\" here.").arg(Text(strange.front()));
  if (!strange.empty()) {
    const CLI::App& innermost = Innermost(root_);
    const QStringList known = unknownCommand ? CommandNames(innermost) : FlagNames(innermost) + FlagNames(root_);
    if (!text.endsWith(QLatin1Char('.'))) text += QLatin1Char('.');
    text += DidYouMean(Text(strange.front()), known);
  }
  Refuse(Reason::kUsage, text);
  std::fprintf(stderr, "Try --help.\n");
  return kUsage;
}

int Runner::Start(const Action& action, Needs needs) {
  HeadlessUi ui;
  if (flags_.bringOnline) ui.SetAnswer(Question::kBringDatabaseOnline, MessageAnswer::kYes);
  if (flags_.startService) ui.SetAnswer(Question::kStartDatabaseService, MessageAnswer::kYes);
  const SystemClock clock;
  const Folders folders = FindFolders(Text(flags_.folder));
  if (const auto problem = FolderProblem(folders.program)) return Refuse(problem->reason, problem->text);
  const bool namesOnly = needs == Needs::kNames || needs == Needs::kNamesUnlogged;
  Application app({.ui = ui, .clock = clock, .folders = folders, .writesLog = needs != Needs::kNamesUnlogged});
  if (const auto problem = IniProblem(app.ini.Path())) return Refuse(problem->reason, problem->text);
  if (const auto problem = namesOnly ? RegistryProblem(app.registryStore) : std::nullopt)
    return Refuse(problem->reason, problem->text);
  const HeadlessStart request{
      .user = Text(flags_.user), .databaseName = Text(flags_.database), .instance = Text(flags_.instance)};
  const StartOutcome outcome = namesOnly ? app.start.SettleHeadless(request) : app.start.RunHeadless(request);
  if (outcome != StartOutcome::kRunning)
    return Refuse(Reason::kNoUser, QStringLiteral("Say who this is done as: --user NAME or QBX_USER."));
  if (needs == Needs::kConnection) {
    if (const auto problem = StartProblem(app, ui)) return Refuse(problem->reason, problem->text);
  }
  SendEmailView view;
  CampaignDesk desk(app, view);
  Program program{ui, app, desk, flags_.json};
  const int code = action(program);
  ui.EndProgress();
  NoteLostDatabase(app.connection);
  return code == kDone && ui.QuitRequested() ? static_cast<int>(kRefused) : code;
}

}  // namespace qbx::ctl
