// Starting the program for a command.

#pragma once

#include <CLI/CLI.hpp>
#include <QString>
#include <functional>

#include "desk/campaign_desk.h"
#include "marketingctl/exit_codes.h"
#include "marketingctl/headless_ui.h"
#include "marketingctl/refusals.h"
#include "startup/application.h"

namespace qbx::ctl {

/// Flags that stand on either side of every command.
struct GlobalFlags {
  std::string folder;
  std::string database;
  std::string instance;
  std::string user;
  bool json = false;
  bool bringOnline = false;
  bool startService = false;
};

/// The program as a command finds it.
struct Program {
  HeadlessUi& ui;
  Application& app;
  CampaignDesk& desk;
  bool json;
};

/// The names of the commands below one.
[[nodiscard]] QStringList CommandNames(const CLI::App& app);

/// Collects the commands, runs the one that the command line names.
class Runner {
 public:
  using Action = std::function<int(Program&)>;

  explicit Runner(CLI::App& root);

  [[nodiscard]] CLI::App& Root() { return root_; }
  [[nodiscard]] const GlobalFlags& Flags() const { return flags_; }

  /// A command that needs the database and a user. The action is run once the program was started; a start without a connection ends the command.
  void AddCommand(CLI::App& command, Action action);
  /// The same, but run whether or not there is a connection.
  void AddOfflineCommand(CLI::App& command, Action action);
  /// A command for which the program only settles its names: it connects by itself, and needs no user.
  void AddUnconnectedCommand(CLI::App& command, Action action);
  /// A command that does not start the program at all.
  void AddBareCommand(CLI::App& command, std::function<int()> action);

  /// Parses and runs.
  /// \return the exit code
  [[nodiscard]] int Run(int argc, char** argv);

 private:
  [[nodiscard]] int Parse(int argc, char** argv);
  enum class Needs { kNames, kStart, kConnection };
  [[nodiscard]] int Start(const Action& action, Needs needs);
  [[nodiscard]] int Misused(const CLI::ParseError& error) const;

  CLI::App& root_;
  GlobalFlags flags_;
  std::function<int()> chosen_;
};

}  // namespace qbx::ctl
