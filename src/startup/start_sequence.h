// The order in which the program starts.

#pragma once

#include <QString>
#include <functional>

#include "campaigns/campaign_storage.h"
#include "database/event_log.h"
#include "diagnostics/diagnostics.h"
#include "platform/host_info.h"
#include "settings/registry_values.h"
#include "startup/connect_host.h"

namespace qbx {

enum class StartOutcome {
  kRefused,  ///< no user was named; the computer's user was told
  kStopped,  ///< the command line held no known switch, or asked for help, or the user agreed to quit
  kRunning,  ///< the windows are open, with or without a database
};

/// What start-up shows. The window program sets the functions; an empty one does nothing.
struct StartWindows {
  std::function<void()> showSplash = {};
  std::function<void()> openWindows = {};
  std::function<void()> closeSplash = {};
};

/// The values for a start without a command line.
struct HeadlessStart {
  QString user;          ///< cut to 20 characters
  QString databaseName;  ///< the whole name; empty for the name of the edition and the registry
  QString instance;      ///< as for the switch /instance:
};

/// What start-up works with, by reference.
struct StartParts {
  StartupValues& startup;
  EventContext& context;
  IniFile& ini;
  RegistryValues& registry;
  HostConnection& hostConnection;
  EventLog& events;
  CampaignStorage& campaigns;
  const HostInfo& host;
  LogFile& log;
  Diagnostics diagnostics;
};

/// Starts the program once. A database that cannot be reached does not stop it.
class StartSequence {
 public:
  explicit StartSequence(const StartParts& parts) : parts_(parts) {}

  /// \param commandLine  as `JoinCommandLine` makes it
  StartOutcome Run(const QString& commandLine, const StartWindows& windows);
  /// Starts without windows, with values instead of switches. The INI file keeps the names only if the database could
  /// be opened.
  StartOutcome RunHeadless(const HeadlessStart& request);
  /// The first part of that: settles the names of edition and database, and connects to nothing. Needs no user.
  StartOutcome SettleHeadless(const HeadlessStart& request);

 private:
  void Prepare();
  void PrepareHeadless(const HeadlessStart& request);
  void SettleHeadlessNames(const HeadlessStart& request);
  void ReadIniFile();
  /// \param mayOverride  whether the registry may name another database
  void SettleNames(bool mayOverride);
  void Refuse();
  void Stop();
  void Work();
  /// Writes the names into the INI file for the next start.
  void RememberNames();

  StartParts parts_;
};

}  // namespace qbx
