// Starts the program for a command.

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

/// Flags that may stand before or behind a command.
struct GlobalFlags {
  std::string folder;
  std::string database;
  std::string instance;
  std::string user;
  bool json = false;
  bool bringOnline = false;
  bool startService = false;
};

/// The started program, as a command gets it.
struct Program {
  HeadlessUi& ui;
  Application& app;
  CampaignDesk& desk;
  bool json;
};

/// The names of the commands below a command.
[[nodiscard]] QStringList CommandNames(const CLI::App& app);

/// Collects the commands and runs the one that the command line names.
class Runner {
 public:
  using Action = std::function<int(Program&)>;

  explicit Runner(CLI::App& root);

  [[nodiscard]] CLI::App& Root() { return root_; }
  [[nodiscard]] const GlobalFlags& Flags() const { return flags_; }

  /// Adds a command that needs the database and a user. The action runs once the program has started. A start without a
  /// connection ends the command.
  void AddCommand(CLI::App& command, Action action);
  /// Adds a command that runs with or without a connection.
  void AddOfflineCommand(CLI::App& command, Action action);
  /// Adds a command that connects by itself and needs no user. The program only finds out its names.
  void AddUnconnectedCommand(CLI::App& command, Action action);
  /// The same, for a command that writes no log.
  void AddUnloggedCommand(CLI::App& command, Action action);
  /// Adds a command that does not start the program at all.
  void AddBareCommand(CLI::App& command, std::function<int()> action);

  /// Parses and runs.
  /// \return the exit code
  [[nodiscard]] int Run(int argc, char** argv);

 private:
  [[nodiscard]] int Parse(int argc, char** argv);
  enum class Needs { kNamesUnlogged, kNames, kStart, kConnection };
  [[nodiscard]] int Start(const Action& action, Needs needs);
  [[nodiscard]] int Misused(const CLI::ParseError& error) const;

  CLI::App& root_;
  GlobalFlags flags_;
  std::function<int()> chosen_;
};

}  // namespace qbx::ctl
